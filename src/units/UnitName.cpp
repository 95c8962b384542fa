#include "units/UnitName.h"

#include "units/Folders.h"

namespace units {

namespace {

constexpr std::string_view separators = "/\\";
constexpr std::string_view currentFolder = "curdir";

bool isDrive(std::string_view part) {
    return part.size() == 2 && part[1] == ':';
}

} // namespace

std::string_view pathSymbol(const UnitName& name) {
    return lowerCase(name.symbol) == currentFolder ? std::string_view() : name.symbol;
}

UnitName parseUnitName(std::string_view text) {
    UnitName name;
    name.isAbsolute = !text.empty() && separators.find(text.front()) != std::string_view::npos;
    for (bool isFirst = true; !text.empty(); isFirst = false) {
        const std::string_view part = text.substr(0, text.find_first_of(separators));
        text.remove_prefix(part.size());
        text.remove_prefix(text.empty() ? 0 : 1);
        if (isFirst && part.starts_with('$')) {
            name.symbol = part.substr(1);
        } else if (isFirst && isDrive(part)) {
            name.isAbsolute = true;
        } else if (!part.empty() && part != ".") {
            name.parts.emplace_back(part);
        }
    }
    return name;
}

} // namespace units
