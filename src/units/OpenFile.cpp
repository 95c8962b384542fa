#include "units/OpenFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace units {

OpenFile::OpenFile(const std::filesystem::path& path)
    // O_NONBLOCK: the name may be that of a pipe without a writer.
    : descriptor_(::open(path.c_str(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    struct stat status {};
    int error = descriptor_ < 0 || ::fstat(descriptor_, &status) != 0 ? errno : 0;
    if (error == 0 && !S_ISREG(status.st_mode)) {
        error = S_ISDIR(status.st_mode) ? EISDIR : EOPNOTSUPP;
    }
    if (error != 0) {
        ::close(descriptor_);
        throw std::system_error(error, std::generic_category());
    }
    rest_ = size_ = static_cast<std::uint64_t>(status.st_size);
}

OpenFile::~OpenFile() {
    ::close(descriptor_);
}

std::size_t OpenFile::read(char* target, std::size_t size) {
    const auto offset = static_cast<off_t>(size_ - rest_);
    for (;;) {
        const ssize_t count = ::pread(descriptor_, target, std::min<std::uint64_t>(size, rest_), offset);
        if (count >= 0) {
            rest_ -= static_cast<std::uint64_t>(count);
            return static_cast<std::size_t>(count);
        }
        if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category());
        }
    }
}

void OpenFile::seek(std::uint64_t offset) {
    rest_ = size_ - std::min(offset, size_);
}

} // namespace units
