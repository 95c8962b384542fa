#include "petal/jobs/readFileList.h"

#include "petal/InputFile.h"

#include <algorithm>
#include <string_view>
#include <unistd.h>

namespace petal {

namespace {

/// The name in a line that may have come from Windows.
std::string_view nameIn(std::string_view line) {
    const bool isCut = line.ends_with('\r') && ::access(std::string(line).c_str(), F_OK) != 0;
    return line.substr(0, line.size() - (isCut ? 1 : 0));
}

} // namespace

std::vector<std::string> readFileList(const std::string& list, bool nulSeparated) {
    const std::string contents = InputFile(list).readRest();
    const char separator = nulSeparated ? '\0' : '\n';
    std::vector<std::string> names;
    for (std::string_view rest = contents; !rest.empty();) {
        const std::string_view name = rest.substr(0, rest.find(separator));
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        if (!name.empty()) {
            names.emplace_back(nulSeparated ? name : nameIn(name));
        }
    }
    return names;
}

} // namespace petal
