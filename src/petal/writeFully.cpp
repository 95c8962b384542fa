#include "petal/writeFully.h"

#include <cerrno>
#include <poll.h>
#include <system_error>
#include <unistd.h>

namespace petal {

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

} // namespace petal
