#pragma once

#include "notation/Place.h"

#include <string>

namespace notation {

/// What can be wrong with a text in the notation.
enum class DamageKind : std::uint8_t {
    unclosedText,
    nulInText,
    controlBytes,
    strayText,
    strayComma,
    unknownConstruct,
    objectWithoutKind,
    unnamedValue,
    noValue,
    badLocation,
    missingClose,
    surplusClose,
    tooDeep,
    truncated,
};

/// One damage, told once however much of the file it puts out of place.
struct Damage {
    DamageKind kind = DamageKind::strayText;
    Place place;
    Place opened;            ///< of `missingClose` and `truncated`: where the innermost construct left open begins
    std::uint64_t count = 0; ///< of these two: how many constructs were left open
};

/// The word for a damage that programs read: "unclosedText" ...
[[nodiscard]] const char* damageWord(DamageKind kind);
/// What is wrong, in half a sentence without the place; ASCII.
[[nodiscard]] std::string damageText(const Damage& damage);
/// "line 12, column 5: " and `damageText`.
[[nodiscard]] std::string damageLine(const Damage& damage);

} // namespace notation
