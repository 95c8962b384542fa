#include "text/ascii.h"

#include <algorithm>

namespace text {

std::string lowerCase(std::string_view text) {
    std::string small(text);
    std::ranges::transform(small, small.begin(), lower);
    return small;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::string_view lastPart(std::string_view path) {
    const std::size_t end = path.find_last_of(":.");
    return end == std::string_view::npos ? path : path.substr(end + 1);
}

} // namespace text
