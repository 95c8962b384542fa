// Two constructs that cannot follow each other show that an earlier parenthesis is missing or surplus, but not which.
// In files that the tool wrote, indentation shows it: the content of a construct is indented further than the
// construct's first line. In other files, a parenthesis is assumed to be missing.

#include "notation/Nesting.h"

#include <algorithm>

namespace notation {

// Whether the file is indented.
bool Nesting::tellsBy(std::uint32_t indent) const {
    return indent != noIndent && std::max(indent, open_.back().indent) > open_.front().indent;
}

// The number of innermost constructs that are indented as far as the line, or further.
std::size_t Nesting::endsByIndent(std::uint32_t indent) const {
    const auto holder =
        std::find_if(open_.rbegin(), open_.rend(), [indent](const Open& open) { return open.indent < indent; });
    return static_cast<std::size_t>(holder - open_.rbegin());
}

std::size_t Nesting::depthInObject() const {
    constexpr std::size_t most = 8;
    for (std::size_t count = 1; count <= std::min(most, open_.size()); ++count) {
        if (open_[open_.size() - count].construct == Construct::object) {
            return count;
        }
    }
    return 0;
}

Nesting::Repair Nesting::forObject(std::uint32_t indent) const {
    if (tellsBy(indent)) {
        const std::size_t ends = endsByIndent(indent);
        const bool fits = ends == open_.size() || open_[open_.size() - ends - 1].construct != Construct::object;
        return {ends, !fits};
    }
    const auto list =
        std::find_if(open_.rbegin(), open_.rend(), [](const Open& open) { return open.construct == Construct::list; });
    return {static_cast<std::size_t>(list - open_.rbegin()), false};
}

Nesting::Repair Nesting::forProperty(std::uint32_t indent) const {
    if (tellsBy(indent)) {
        const std::size_t ends = endsByIndent(indent);
        if (ends < open_.size()) {
            return {ends, open_[open_.size() - ends - 1].construct != Construct::object};
        }
    }
    const auto object = std::find_if(open_.rbegin(), open_.rend(),
                                     [](const Open& open) { return open.construct == Construct::object; });
    return {object != open_.rend() ? static_cast<std::size_t>(object - open_.rbegin()) : 0, false};
}

} // namespace notation
