#include "notation/damage.h"

#include <array>

namespace notation {

namespace {

struct Row {
    DamageKind kind;
    const char* word;
    const char* text; // "{n}" is the number of missing parentheses, "{at}" the start of the innermost open construct
};

constexpr std::array rows{
    Row{DamageKind::unclosedText, "unclosedText", "the closing quote is missing; the text ends with its line"},
    Row{DamageKind::nulInText, "nulInText", "the text contains a NUL byte"},
    Row{DamageKind::controlBytes, "controlBytes", "control bytes outside of texts are skipped"},
    Row{DamageKind::strayText, "strayText", "this is outside of any object and is skipped"},
    Row{DamageKind::strayComma, "strayComma", "this comma is outside of a location and is skipped"},
    Row{DamageKind::unknownConstruct, "unknownConstruct",
        "the construct that starts here is not an object, a list or a value"},
    Row{DamageKind::objectWithoutKind, "objectWithoutKind", "the object has no kind"},
    Row{DamageKind::unnamedValue, "unnamedValue", "there is no property name before this value"},
    Row{DamageKind::noValue, "noValue", "the property has no value"},
    Row{DamageKind::badLocation, "badLocation", "this is not a location of two numbers, (x, y)"},
    Row{DamageKind::missingClose, "missingClose",
        "{n} missing before this; the innermost open construct starts at {at}"},
    Row{DamageKind::surplusClose, "surplusClose", "one closing parenthesis too many, here or earlier"},
    Row{DamageKind::tooDeep, "tooDeep", "this is nested too deep; everything deeper is skipped"},
    Row{DamageKind::truncated, "truncated",
        "the file ends early: {n} missing; the innermost open construct starts at {at}"},
};

constexpr bool inOrder() {
    for (std::size_t index = 0; index < rows.size(); ++index) {
        if (static_cast<std::size_t>(rows[index].kind) != index) {
            return false;
        }
    }
    return rows.size() == static_cast<std::size_t>(DamageKind::truncated) + 1;
}
static_assert(inOrder());

std::string placeText(const Place& place) {
    return "line " + std::to_string(place.line) + ", column " + std::to_string(place.column);
}

std::string missingText(std::uint64_t count) {
    return count == 1 ? "1 closing parenthesis is" : std::to_string(count) + " closing parentheses are";
}

void replace(std::string& text, std::string_view what, const std::string& with) {
    if (const std::size_t at = text.find(what); at != std::string::npos) {
        text.replace(at, what.size(), with);
    }
}

} // namespace

const char* damageWord(DamageKind kind) {
    return rows[static_cast<std::size_t>(kind)].word;
}

std::string damageText(const Damage& damage) {
    std::string text = rows[static_cast<std::size_t>(damage.kind)].text;
    replace(text, "{n}", missingText(damage.count));
    replace(text, "{at}", placeText(damage.opened));
    return text;
}

std::string damageLine(const Damage& damage) {
    return placeText(damage.place) + ": " + damageText(damage);
}

} // namespace notation
