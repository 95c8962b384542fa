#include "bridge/ModelFile.h"

#include "builder/BuilderState.h"
#include "literals/QEV_RRSE.h"

#include <array>
#include <cstring>

namespace rose {

void openModelFile(const KelString& localPath) {
    theFile = std::fopen(localPath.text(), "r");
    if (theFile == nullptr) {
        QEV_RRSE::ROS_I_UNABLE_TO_OPEN_INPUT_FILE.throwException(localPath);
    }
    constexpr std::size_t headerLength = 20;
    std::array<char, headerLength + 1> header{}; // with its NUL; the text ends at a NUL in the file as well
    const std::size_t read = std::fread(header.data(), 1, headerLength, theFile);
    header[read] = '\0';
    if (std::strstr(header.data(), "(object Petal") == nullptr) {
        QEV_RRSE::ROS_I_BAD_INPUT_FILE_FORMAT.throwException();
    }
}

} // namespace rose
