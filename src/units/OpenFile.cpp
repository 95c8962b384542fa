#include "units/OpenFile.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace units {

OpenFile::OpenFile(const std::filesystem::path& path)
    : descriptor_(::open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC)) {
    if (descriptor_ < 0) {
        throw std::system_error(errno, std::generic_category());
    }
}

OpenFile::~OpenFile() {
    ::close(descriptor_);
}

std::size_t OpenFile::read(char* target, std::size_t size) {
    return notation::DescriptorSource(descriptor_).read(target, size);
}

void OpenFile::seek(std::uint64_t offset) const {
    if (::lseek(descriptor_, static_cast<off_t>(offset), SEEK_SET) < 0) {
        throw std::system_error(errno, std::generic_category());
    }
}

} // namespace units
