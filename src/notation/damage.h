#pragma once

#include "notation/Place.h"

#include <string>

namespace notation {

/// The kinds of errors in the notation of a file.
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

/// An error in the notation, reported once however much of the file it affects.
struct Damage {
    DamageKind kind = DamageKind::strayText;
    Place place;
    Place opened;            ///< of `missingClose` and `truncated`: the start of the innermost open construct
    std::uint64_t count = 0; ///< of these two: the number of missing parentheses
};

/// The name of a kind of damage for programs: "unclosedText" ...
[[nodiscard]] const char* damageWord(DamageKind kind);
/// A description for people, without the place; half a sentence in ASCII.
[[nodiscard]] std::string damageText(const Damage& damage);
/// "line 12, column 5: " and `damageText`.
[[nodiscard]] std::string damageLine(const Damage& damage);

} // namespace notation
