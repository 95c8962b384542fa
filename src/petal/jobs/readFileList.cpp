#include "petal/jobs/readFileList.h"

#include "petal/readWholeFile.h"

#include <algorithm>
#include <string_view>

namespace petal {

std::vector<std::string> readFileList(const std::string& list, bool nulSeparated) {
    const std::string contents = readWholeFile(list);
    const char separator = nulSeparated ? '\0' : '\n';
    std::vector<std::string> names;
    for (std::string_view rest = contents; !rest.empty();) {
        const std::string_view name = rest.substr(0, rest.find(separator));
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        if (!name.empty()) {
            names.emplace_back(name);
        }
    }
    return names;
}

} // namespace petal
