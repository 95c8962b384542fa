// What the matcher takes for granted about the rule table, checked when it is compiled.

#include "scanner/RuleTable.h"

#include <algorithm>

namespace rose {

namespace {

constexpr std::string_view blankBytes = " \t";

/// A rule is found by its number.
consteval bool areNumberedInOrder() {
    for (std::size_t index = 0; index < ruleCount; ++index) {
        if (patterns[index].number != static_cast<int>(index) + 1) {
            return false;
        }
    }
    return true;
}

/// A lead is told from its literal, and a literal never holds what ends a tail.
consteval bool areLiteralsPlain() {
    return std::all_of(patterns.begin(), patterns.end(), [](const Pattern& pattern) {
        const auto isPlain = [](std::string_view text) {
            return text.find_first_of(std::string_view("\"\n\t\0", 4)) == std::string_view::npos &&
                   blankBytes.find(text.front()) == std::string_view::npos &&
                   blankBytes.find(text.back()) == std::string_view::npos;
        };
        return isPlain(pattern.literal.first) && (pattern.literal.second.empty() || isPlain(pattern.literal.second));
    });
}

consteval bool needsBlankBehind(const Pattern& pattern) {
    return pattern.tail == Tail::valueTail || pattern.tail == Tail::flagTail || pattern.tail == Tail::spaceTail ||
           pattern.tail == Tail::viewTail;
}

/// No two patterns match at one place: a literal that starts another one needs a blank where that goes on without.
consteval bool areExclusive() {
    for (const Pattern& shorter : patterns) {
        for (const Pattern& longer : patterns) {
            const std::string_view start = shorter.literal.first;
            const std::string_view whole = longer.literal.first;
            if (shorter.number != longer.number && whole.starts_with(start) &&
                (whole.size() == start.size() || !needsBlankBehind(shorter) || whole[start.size()] == ' ')) {
                return false;
            }
        }
    }
    return true;
}

static_assert(areNumberedInOrder());
static_assert(areLiteralsPlain());
static_assert(areExclusive());

} // namespace

} // namespace rose
