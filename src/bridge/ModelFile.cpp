#include "bridge/ModelFile.h"

#include "builder/BuilderState.h"
#include "literals/QEV_RRSE.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>

namespace rose {

namespace {

constexpr std::size_t headerLength = 20;

/// Reads what there is of the header. An interrupted read is made again.
void readHeader(char* header) {
    std::size_t read = 0;
    do {
        std::clearerr(state.theFile);
        errno = 0;
        read += std::fread(header + read, 1, headerLength - read, state.theFile);
    } while (std::ferror(state.theFile) != 0 && errno == EINTR);
}

} // namespace

void openModelFile(const KelString& localPath) {
    state.theFile = std::fopen(localPath.text(), "r");
    if (state.theFile == nullptr) {
        QEV_RRSE::ROS_I_UNABLE_TO_OPEN_INPUT_FILE.throwException(localPath);
    }
    std::array<char, headerLength + 1> header{}; // with its NUL; the text ends at a NUL in the file as well
    readHeader(header.data());
    if (std::strstr(header.data(), "(object Petal") == nullptr) {
        QEV_RRSE::ROS_I_BAD_INPUT_FILE_FORMAT.throwException();
    }
}

} // namespace rose
