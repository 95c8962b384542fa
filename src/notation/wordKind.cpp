#include "notation/wordKind.h"

#include <algorithm>

namespace notation {

namespace {

constexpr bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

/// Removes digits from the start; returns whether there were any.
bool takeDigits(std::string_view& run) {
    const auto count = static_cast<std::size_t>(std::ranges::find_if_not(run, isDigit) - run.begin());
    run.remove_prefix(count);
    return count > 0;
}

bool takeAny(std::string_view& run, char byte, char other) {
    const bool has = !run.empty() && (run.front() == byte || run.front() == other);
    run.remove_prefix(has ? 1 : 0);
    return has;
}

} // namespace

TokenKind wordKind(std::string_view run) {
    const bool isLetter = !run.empty() && run.front() > '@'; // the usual case
    if (isLetter || run.size() > longestNumber) {
        return TokenKind::word;
    }
    if (takeAny(run, '@', '@')) {
        return takeDigits(run) && run.empty() ? TokenKind::reference : TokenKind::word;
    }
    takeAny(run, '+', '-');
    bool isNumber = takeDigits(run);
    if (isNumber && run.empty()) {
        return TokenKind::integer;
    }
    if (takeAny(run, '.', '.')) {
        isNumber = takeDigits(run) || isNumber;
    }
    if (isNumber && takeAny(run, 'e', 'E')) {
        takeAny(run, '+', '-');
        isNumber = takeDigits(run);
    }
    return isNumber && run.empty() ? TokenKind::real : TokenKind::word;
}

} // namespace notation
