#include "petal/followLinks.h"

#include <cerrno>
#include <system_error>

namespace petal {

namespace {

constexpr int mostLinks = 40; // as many as the system itself follows

} // namespace

std::filesystem::path followLinks(std::filesystem::path file) {
    for (int links = 0; std::filesystem::is_symlink(std::filesystem::symlink_status(file)); ++links) {
        if (links == mostLinks) {
            throw std::system_error(ELOOP, std::generic_category());
        }
        file = file.parent_path() / std::filesystem::read_symlink(file);
    }
    return file;
}

} // namespace petal
