#include "petal/info/InputFile.h"

#include "petal/Failure.h"
#include "petal/info/foreignFormats.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace petal {

namespace {

struct Advice {
    int error;
    const char* text;
};

constexpr std::array advices{
    Advice{ENOENT, "Check the name of the file."},
    Advice{ENOTDIR, "Check the name of the file."},
    Advice{EISDIR, "Name the model files in that folder."},
    Advice{EACCES, "Change its permissions."},
};

Failure readFailure(const std::string& path, int error) {
    const auto* found = std::ranges::find(advices, error, &Advice::error);
    return {Outcome::inputNotRead, "cannot read '" + path + "': " + std::generic_category().message(error),
            found != advices.end() ? found->text : ""};
}

} // namespace

InputFile::InputFile(std::string path)
    : path_(std::move(path)),
      descriptor_(path_ == "-" ? STDIN_FILENO : ::open(path_.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC)) {
    if (descriptor_ < 0) {
        throw readFailure(path_, errno);
    }
}

InputFile::~InputFile() {
    if (descriptor_ != STDIN_FILENO) {
        ::close(descriptor_);
    }
}

std::size_t InputFile::read(char* target, std::size_t size) {
    try {
        const std::size_t count = notation::DescriptorSource(descriptor_).read(target, size);
        head_.append(target, std::min(count, formatHeadLength - head_.size()));
        return count;
    } catch (const std::system_error& error) {
        throw readFailure(path_, error.code().value());
    }
}

} // namespace petal
