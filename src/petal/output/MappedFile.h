#pragma once

#include "petal/output/Descriptor.h"

#include <cstddef>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>

namespace petal {

/// The bytes of a file, mapped as they are at its making. It does not need the descriptor afterwards. Throws
/// `std::system_error`.
class MappedFile {
public:
    explicit MappedFile(int descriptor) {
        struct stat status {};
        if (::fstat(descriptor, &status) != 0) {
            throwErrno();
        }
        length_ = static_cast<std::size_t>(status.st_size);
        if (length_ > 0) {
            bytes_ = ::mmap(nullptr, length_, PROT_READ, MAP_PRIVATE | MAP_POPULATE, descriptor, 0);
            if (bytes_ == MAP_FAILED) {
                throwErrno();
            }
        }
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    ~MappedFile() {
        if (length_ > 0) {
            ::munmap(bytes_, length_);
        }
    }

    [[nodiscard]] std::string_view view() const { return {static_cast<const char*>(bytes_), length_}; }

private:
    void* bytes_ = nullptr;
    std::size_t length_ = 0;
};

} // namespace petal
