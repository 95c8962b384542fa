#include "notation/damage.h"

#include <array>

namespace notation {

namespace {

struct Row {
    DamageKind kind;
    const char* word;
    const char* text; // "{n}" is the number of constructs left open, "{at}" where the innermost begins
};

constexpr std::array rows{
    Row{DamageKind::unclosedText, "unclosedText", "the closing quote is missing; the text ends with its line"},
    Row{DamageKind::nulInText, "nulInText", "there is a NUL byte within the text"},
    Row{DamageKind::controlBytes, "controlBytes", "there are control bytes between the words; they are skipped"},
    Row{DamageKind::strayText, "strayText", "this stands outside of any object and is skipped"},
    Row{DamageKind::strayComma, "strayComma", "this comma stands outside of a location and is skipped"},
    Row{DamageKind::unknownConstruct, "unknownConstruct",
        "what begins here is neither an object nor a list nor a value"},
    Row{DamageKind::objectWithoutKind, "objectWithoutKind", "the object does not say what it is"},
    Row{DamageKind::unnamedValue, "unnamedValue", "no property's name stands in front of this value"},
    Row{DamageKind::noValue, "noValue", "the property has no value"},
    Row{DamageKind::badLocation, "badLocation", "this is not a location of two numbers, (x, y)"},
    Row{DamageKind::missingClose, "missingClose",
        "closing parentheses are missing in front of this: {n}, the innermost for what begins at {at}"},
    Row{DamageKind::surplusClose, "surplusClose", "there is a closing parenthesis too many here or further up"},
    Row{DamageKind::tooDeep, "tooDeep", "this is nested too deep; what is nested deeper is skipped"},
    Row{DamageKind::truncated, "truncated",
        "the file ends too early: closing parentheses are missing: {n}, the innermost for what begins at {at}"},
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
    replace(text, "{n}", std::to_string(damage.count));
    replace(text, "{at}", placeText(damage.opened));
    return text;
}

std::string damageLine(const Damage& damage) {
    return placeText(damage.place) + ": " + damageText(damage);
}

} // namespace notation
