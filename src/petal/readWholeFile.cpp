#include "petal/readWholeFile.h"

#include "petal/Descriptor.h"
#include "petal/Failure.h"
#include "petal/namedDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>

namespace petal {

namespace {

constexpr std::size_t pieceLength = std::size_t{64} * 1024;

[[noreturn]] void fail(const std::string& path) {
    throw Failure(Outcome::inputNotRead, "cannot read '" + path + "': " + std::generic_category().message(errno),
                  "Check the name of the file and its permissions.");
}

} // namespace

std::string readWholeFile(const std::string& path) {
    const Descriptor file(path == "-" ? duplicate(STDIN_FILENO)
                                      : ::open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC));
    if (!file.isOpen()) {
        fail(path);
    }
    std::string contents;
    for (ssize_t count = 1; count != 0;) {
        const std::size_t length = contents.size();
        contents.resize(length + pieceLength);
        count = ::read(file.get(), contents.data() + length, pieceLength);
        if (count < 0 && errno != EINTR) {
            fail(path);
        }
        contents.resize(length + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return contents;
}

} // namespace petal
