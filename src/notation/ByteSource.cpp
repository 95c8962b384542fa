#include "notation/ByteSource.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <system_error>
#include <unistd.h>

namespace notation {

std::size_t MemorySource::read(char* target, std::size_t size) {
    const std::string_view taken = bytes_.substr(0, std::min(size, most_));
    if (!taken.empty()) {
        std::memcpy(target, taken.data(), taken.size());
    }
    bytes_.remove_prefix(taken.size());
    return taken.size();
}

std::size_t DescriptorSource::read(char* target, std::size_t size) {
    for (;;) {
        const ssize_t count = ::read(descriptor_, target, size);
        if (count >= 0) {
            return static_cast<std::size_t>(count);
        }
        if (errno == EAGAIN || errno == EWOULDBLOCK) {
            pollfd input{.fd = descriptor_, .events = POLLIN, .revents = 0};
            ::poll(&input, 1, -1);
        } else if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category());
        }
    }
}

} // namespace notation
