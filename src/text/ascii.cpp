#include "text/ascii.h"

#include <algorithm>

namespace text {

bool isPrintableAscii(std::string_view text) {
    unsigned char isUnusual = 0; // no early end, so that the compiler can look at many bytes at a time
    for (const char byte : text) {
        isUnusual |= static_cast<unsigned char>(byte < ' ' || byte == 0x7F); // bytes beyond ASCII are negative
    }
    return isUnusual == 0;
}
static_assert(static_cast<char>(0x80) < 0);

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
