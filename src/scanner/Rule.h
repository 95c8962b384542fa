#pragma once

#include <cstdint>
#include <string_view>

namespace rose {

/// The text before a pattern's literal. A blank is a space or a tab.
enum class Lead : std::uint8_t {
    noLead,         ///< nothing; the literal starts the match
    oneBlank,       ///< exactly one blank
    blanks,         ///< one or more blanks
    optionalBlanks, ///< zero or more blanks
    optionalSpaces, ///< zero or more spaces, no tabs
};

/// The text after a pattern's literal. Every tail is greedy; a "run" is the longest text without the characters
/// that stop it.
enum class Tail : std::uint8_t {
    valueTail, ///< one or more blanks, an optional quote, a run up to a quote or newline
    flagTail,  ///< as valueTail, but the run also stops at a closing parenthesis
    looseTail, ///< as valueTail, but with zero or more blanks
    spaceTail, ///< as valueTail, but with one or more spaces in place of the blanks
    noTail,    ///< nothing
    lineTail,  ///< the rest of the line without its newline
    viewTail,  ///< blanks, a quoted string, blanks, an optional quote, a run up to a quote, then, if that quote is
               ///< there, the rest of its line; string and run may hold newlines
};

/// The literal text of a pattern; only one pattern has a second part, separated from the first by optional blanks.
struct Literal {
    std::string_view first;
    std::string_view second{};

    constexpr Literal(const char* text) : first(text) {}
    constexpr Literal(const char* text, const char* afterBlanks) : first(text), second(afterBlanks) {}
};

/// One keyword pattern: lead, literal and tail, matched in this order with nothing in between.
struct Pattern {
    int number; ///< the rule's number, from 1
    Lead lead;
    Literal literal;
    Tail tail;
};

/// Whether a rule acts only while a package is current.
enum class PackageGuard : std::uint8_t { anyPackage, needsPackage };

/// Whether a rule is silent inside the objects whose contents are not imported (`objectMechanism`).
enum class MechanismGuard : std::uint8_t { always, muted };

/// The reader that extracts a rule's value from the match, always with the double quote as its delimiter.
enum class Reader : std::uint8_t { noReader, getValue, getValue3, getValue4ElseMultiLine, getValue5 };

/// The data that a rule has read from the input. It is valid until the rule's action returns.
struct Reading {
    const char* text;    ///< the match as a C string: a NUL in it ends the text
    char* value;         ///< the result of the rule's reader; null when it found none or the rule has no reader
    long viewNumber = 0; ///< the number that `getValue5` also found
};

/// The effect of a rule.
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
