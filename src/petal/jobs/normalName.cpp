#include "petal/jobs/Source.h"

#include <algorithm>
#include <filesystem>

namespace petal {

std::string normalName(const std::string& given) {
    const std::filesystem::path path(given);
    // What ".." leads to depends on the links before it, so only the file system can tell.
    const bool goesUp = std::find(path.begin(), path.end(), "..") != path.end();
    return goesUp ? std::filesystem::weakly_canonical(std::filesystem::absolute(path)) : path.lexically_normal();
}

} // namespace petal
