#include "notation/unclosedText.h"

#include <algorithm>

namespace notation {

TextEnd endOfUnclosedText(std::string_view rest) {
    const std::size_t last = rest.find_last_not_of(") \t\r\v\f");
    const std::size_t tail = last + 1; // 0 if there are no others
    if (tail > 1 && rest[last] == '"') {
        return {last, tail, true};
    }
    const std::string_view body = rest.substr(0, tail);
    std::ptrdiff_t open = std::ranges::count(body, '(') - std::ranges::count(body, ')');
    std::size_t end = tail;
    for (std::size_t at = tail; open > 0 && at < rest.size(); ++at) {
        if (rest[at] == ')') {
            --open;
            end = at + 1;
        }
    }
    return {end, end, false};
}

} // namespace notation
