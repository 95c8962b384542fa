#include "units/PathSymbols.h"

#include "units/Folders.h"

#include <cstdlib>

namespace units {

void PathSymbols::map(std::string_view symbol, std::filesystem::path folder) {
    symbol.remove_prefix(symbol.starts_with('$') ? 1 : 0);
    folders_[lowerCase(symbol)] = std::move(folder);
}

bool PathSymbols::isMapped(std::string_view symbol) const {
    return folders_.contains(lowerCase(symbol));
}

std::optional<std::filesystem::path> PathSymbols::find(const std::string& symbol) const {
    if (const auto found = folders_.find(lowerCase(symbol)); found != folders_.end()) {
        return found->second;
    }
    const char* variable = std::getenv(symbol.c_str());
    return variable != nullptr && *variable != '\0' ? std::optional<std::filesystem::path>(variable) : std::nullopt;
}

} // namespace units
