#pragma once

#include "scanner/Pattern.h"

#include <cstdint>

namespace rose {

/// Whether a rule acts only while a package is current.
enum class PackageGuard : std::uint8_t { anyPackage, needsPackage };

/// Whether a rule is silent inside the objects whose contents are not imported (`objectMechanism`).
enum class MechanismGuard : std::uint8_t { always, muted };

/// The reader that takes a rule's value out of the match, always with the double quote as its delimiter.
enum class Reader : std::uint8_t { noReader, getValue, getValue3, getValue4ElseMultiLine, getValue5 };

/// What a rule has taken from the input. All of it stays good until the rule's action returns.
struct Reading {
    const char* text;    ///< the match as a C string: a NUL in it ends what the action sees
    char* value;         ///< what the rule's reader returned; null when it found none or the rule has no reader
    long viewNumber = 0; ///< the number that `getValue5` found besides
};

/// What a rule does.
using Action = void (*)(const Reading& reading);

/// One row of the rule table.
struct Rule {
    Pattern pattern;
    PackageGuard package;
    MechanismGuard mechanism;
    Reader reader;
    Action action;

    constexpr Rule(int number, Lead lead, Literal literal, Tail tail, PackageGuard package, MechanismGuard mechanism,
                   Reader reader, Action action)
        : pattern{number, lead, literal, tail}, package(package), mechanism(mechanism), reader(reader), action(action) {
    }
};

} // namespace rose
