#pragma once

#include "notation/damage.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace notation {

/// A part of a file in parentheses that contains other parts.
enum class Construct : std::uint8_t {
    object, ///< (object Class "Order" @12 ...)
    list,   ///< (list Operations ...)
    value,  ///< (value Text "...")
    group,  ///< any other, such as ("Ctor_Set" 62)
};

enum class EventKind : std::uint8_t {
    start, ///< a construct begins
    end,   ///< a construct ends
    text,  ///< a quoted text
    line,  ///< a line of a "|" text
    integer,
    real,
    reference, ///< @12
    location,  ///< (10, 20)
    flag,      ///< TRUE or FALSE
    word,      ///< any other word as a value
    nothing,   ///< a property's name without a value
    damage,
};

/// A name of an object: a text after its kind.
struct Name {
    std::string_view text;    ///< unchanged bytes, at most `Reader::Settings::longestName`
    std::uint64_t length = 0; ///< of the whole name
    bool hasEscapes = false;  ///< the name is in quotes: backslashes escape
    std::uint64_t offset = 0; ///< of its first byte, after the quote
};

/// A step of reading a file. Views are valid until the next call of `Reader::next`.
///
/// Texts are bytes in the file's encoding. Quoted texts include their escapes (`unescaped` removes them).
struct Event {
    EventKind kind = EventKind::damage;
    Construct construct = Construct::object; ///< of `start` and `end`
    bool continues = false;                  ///< a further piece of the previous event's value; it has no key
    bool startsLine = false;                 ///< a `line`: this piece starts a line; with `continues`, after a line end
    bool isImplied = false;                  ///< a `start` or `end` that is missing from the file
    std::size_t depth = 0;                   ///< the number of constructs around it

    std::string_view key;        ///< the name of the property that has this value; empty for none
    Place keyPlace;              ///< the place of that name, if there is a key
    std::string_view text;       ///< of a `start` its kind (may be empty), of a location its x
    std::string_view y;          ///< of a location
    std::span<const Name> names; ///< of an object's `start`
    std::string_view reference;  ///< of an object's `start`: the number after "@"; empty for none

    Place place;           ///< its start: of a construct the "("; of an `end` that of the construct
    std::uint64_t end = 0; ///< the offset after it; of an object's `start` after its names, of an `end` after ")"
    const Damage* damage = nullptr; ///< of `damage`

    /// Whether a property begins here. Every property begins in exactly one event.
    [[nodiscard]] bool isProperty() const { return !key.empty(); }
};

} // namespace notation
