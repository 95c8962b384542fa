#pragma once

#include "notation/damage.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace notation {

/// What stands in parentheses and holds other things.
enum class Construct : std::uint8_t {
    object, ///< (object Class "Order" @12 ...)
    list,   ///< (list Operations ...)
    value,  ///< (value Text "...")
    group,  ///< any other, such as ("Ctor_Set" 62)
};

enum class EventKind : std::uint8_t {
    start, ///< a construct begins
    end,   ///< and ends
    text,  ///< a quoted text
    line,  ///< a line of a "|" text
    integer,
    real,
    reference, ///< @12
    location,  ///< (10, 20)
    flag,      ///< TRUE or FALSE
    word,      ///< any other word in the place of a value
    nothing,   ///< a property's name without a value
    damage,
};

/// A name of an object: a text behind its kind.
struct Name {
    std::string_view text;    ///< bytes as they stand; no more of them than `Reader::Settings` says
    std::uint64_t length = 0; ///< of the whole name
    bool hasEscapes = false;  ///< it was in quotes: backslashes escape
    std::uint64_t offset = 0; ///< of its first byte, behind the quote
};

/// What the reader came upon. Views are good until the reader goes on.
///
/// Texts are bytes in the file's encoding. Those in quotes hold their escapes (`unescaped` takes them out).
struct Event {
    EventKind kind = EventKind::damage;
    Construct construct = Construct::object; ///< of `start` and `end`
    bool continues = false;                  ///< a further piece of the value of the event before; it has no key
    bool startsLine = false; ///< a `line`: this piece starts one; with `continues` a line end stands in front of it
    bool isImplied = false;  ///< a `start` or `end` that the file lacks
    std::size_t depth = 0;   ///< how many constructs are around it

    std::string_view key;        ///< the property that this is the value of; empty for none
    Place keyPlace;              ///< where the property's name stands; when there is a key
    std::string_view text;       ///< of a `start` the word that says what it is (may be empty), of a location its x
    std::string_view y;          ///< of a location
    std::span<const Name> names; ///< of an object's `start`
    std::string_view reference;  ///< of an object's `start`: the number behind "@"; empty for none

    Place place;           ///< where this begins: a construct at its "("; of an `end` where the construct began
    std::uint64_t end = 0; ///< the offset behind it; of an object's `start` behind its names, of an `end` behind ")"
    const Damage* damage = nullptr; ///< of `damage`

    /// Whether a property begins here: every one does so in exactly one event.
    [[nodiscard]] bool isProperty() const { return !key.empty(); }
};

} // namespace notation
