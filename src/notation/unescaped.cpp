#include "notation/unescaped.h"

namespace notation {

std::string unescaped(std::string_view text) {
    if (text.find('\\') == std::string_view::npos) {
        return std::string(text);
    }
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool escapes = text[at] == '\\' && at + 1 < text.size() && (text[at + 1] == '"' || text[at + 1] == '\\');
        at += escapes ? 1 : 0;
        result += text[at];
    }
    return result;
}

} // namespace notation
