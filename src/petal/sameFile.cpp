#include "petal/sameFile.h"

#include <filesystem>
#include <sys/stat.h>
#include <system_error>

namespace petal {

bool areSameFile(const std::string& first, const std::string& second) {
    struct stat one {};
    struct stat other {};
    const bool firstExists = ::stat(first.c_str(), &one) == 0;
    const bool secondExists = ::stat(second.c_str(), &other) == 0;
    if (firstExists && secondExists) {
        return S_ISREG(one.st_mode) && one.st_dev == other.st_dev && one.st_ino == other.st_ino;
    }
    std::error_code error;
    return !firstExists && !secondExists &&
           std::filesystem::weakly_canonical(first, error) == std::filesystem::weakly_canonical(second, error) &&
           !error;
}

} // namespace petal
