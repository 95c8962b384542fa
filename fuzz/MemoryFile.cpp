#include "MemoryFile.h"

#include "require.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fuzz {

MemoryFile::MemoryFile()
    : descriptor_(::memfd_create("model", MFD_CLOEXEC)), path_("/proc/self/fd/" + std::to_string(descriptor_)) {
    require(descriptor_ >= 0, "the system gives no file in memory");
}

MemoryFile::~MemoryFile() {
    ::close(descriptor_);
}

void MemoryFile::put(std::string_view bytes) {
    const auto size = static_cast<::off_t>(bytes.size());
    const bool isPut = ::ftruncate(descriptor_, 0) == 0 && ::pwrite(descriptor_, bytes.data(), bytes.size(), 0) == size;
    require(isPut && ::lseek(descriptor_, 0, SEEK_SET) == 0, "the file in memory takes no more");
}

std::string MemoryFile::contents() const {
    struct ::stat status {};
    require(::fstat(descriptor_, &status) == 0, "the file in memory has no size");
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    require(::pread(descriptor_, bytes.data(), bytes.size(), 0) == status.st_size, "the file in memory is not read");
    return bytes;
}

} // namespace fuzz
