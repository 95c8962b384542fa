#include "petal/output/Descriptor.h"

#include "petal/output/ModelOutput.h"
#include "petal/output/fileFailure.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <poll.h>
#include <system_error>
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

void writeFully(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            pollfd room{.fd = descriptor, .events = POLLOUT, .revents = 0};
            ::poll(&room, 1, -1);
        } else if (errno != EINTR) {
            throwErrno();
        }
    }
}

void throwErrno() {
    throw std::system_error(errno, std::generic_category());
}

void writeToStandardOutput(std::string_view text) {
    try {
        const auto output = ModelOutput::open(std::nullopt);
        output->write(text);
        output->commit();
    } catch (const std::system_error& error) {
        throw outputFailure("standard output", error);
    }
}

} // namespace petal
