#include "petal/namedDescriptor.h"

#include "petal/writeFully.h"

#include <array>
#include <charconv>
#include <fcntl.h>
#include <unistd.h>

namespace petal {

namespace {

constexpr std::array<std::string_view, 2> descriptorFolders{"/dev/fd/", "/proc/self/fd/"};

} // namespace

int namedDescriptor(std::string_view path) {
    if (path == "/dev/stdout") {
        return STDOUT_FILENO;
    }
    if (path == "/dev/stderr") {
        return STDERR_FILENO;
    }
    for (const std::string_view folder : descriptorFolders) {
        if (path.starts_with(folder)) {
            int descriptor = -1;
            const char* end = path.data() + path.size();
            const auto [stop, error] = std::from_chars(path.data() + folder.size(), end, descriptor);
            return error == std::errc() && stop == end ? descriptor : -1;
        }
    }
    return -1;
}

int duplicate(int descriptor) {
    const int made = ::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (made < 0) {
        throwErrno();
    }
    return made;
}

} // namespace petal
