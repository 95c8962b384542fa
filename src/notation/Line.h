#pragma once

#include "notation/Event.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace notation {

/// A line of a file that was read as a whole. Nearly all lines of real files are in one of its forms:
///
///     location   	(320, -64)
///     label      	(value Text "Order"))
///     vertices   	(list Points
///     (object ClassView "Class" "Logical View::Order" @7
///     (-16, 240)
///     ))
///
/// It stands for the events from the first token to the last one: the start of a construct or a value, then the ends of
/// constructs. It has no damages. Views point into the buffer of the reader; they are valid until it reads on.
struct Line {
    static constexpr std::size_t mostNames = 2;
    static constexpr std::uint32_t mostEnds = 64;

    std::string_view key;            ///< the name of a property; empty for none
    Place place;                     ///< of the first token: of the key if there is one
    EventKind kind = EventKind::end; ///< `start`, `text`, `reference`, `location`, `word`; `end`: only ends
    Construct construct{};           ///< of `start`: object or list; of a text: value if it is in one
    std::string_view text;           ///< of `start` its kind; of a location its x
    std::string_view y;              ///< of a location
    std::uint64_t valueBegin = 0;    ///< the offset of the value or construct
    std::array<std::string_view, mostNames> names; ///< of an object; without escapes
    std::uint32_t ends = 0;       ///< the number of ")" that end constructs, those of this line included
    std::string_view reference;   ///< of an object: the number after "@"; empty for none
    std::uint64_t endsBegin = 0;  ///< the offset of the first of them; the others follow it
    std::uint64_t objectEnds = 0; ///< a bit for each of them that ends an object, the first one's the lowest
    std::uint64_t next = 0;       ///< the offset of the next token, on a later line

    [[nodiscard]] Place valuePlace() const {
        return {valueBegin, place.line, place.column + valueBegin - place.offset};
    }
    [[nodiscard]] bool isStart() const { return kind == EventKind::start; }
    [[nodiscard]] bool isObject() const { return isStart() && construct == Construct::object; }
};

/// A line in memory that is to be read, and the end of the one that was read before it.
struct LineStart {
    const char* begin = nullptr; ///< of the line, or a place in the blanks before its first token
    const char* token = nullptr; ///< its first token
    std::uint64_t number = 1;    ///< of the line
    std::uint64_t offset = 0;    ///< of the line's first byte
    std::uint32_t indent = 0;    ///< the columns of blanks before `begin`
    const char* end = nullptr;   ///< of the line before: what follows its last token; null for none
    std::uint64_t endNumber = 0; ///< of that line
    std::uint64_t endOffset = 0; ///< of that line's first byte
    std::uint64_t barLine = 0;   ///< the last line with a "|" text since lines are read; 0 for none
};

} // namespace notation
