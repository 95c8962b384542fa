#pragma once

#include "notation/ByteSource.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace source {

/// The object that has a quid.
struct QuidOwner {
    /// The end of reading from an object to a place after it.
    enum class Reading : std::uint8_t {
        quid,   ///< there is a quid, of the owner
        noQuid, ///< no quid is there
        ended,  ///< the object ends before the place
        damage, ///< a damage is before the place
    };

    Reading reading = Reading::damage;
    std::uint64_t begin = 0;   ///< the offset of its "("
    std::uint64_t headEnd = 0; ///< the offset of the first property or object in it
};

/// Reads from an object at an offset to what may be the name "quid" at another one after it. `text` are the bytes from
/// the object on, at least as far as the quid's text; `window` of them are in memory at a time. Takes time proportional
/// to the text between. Throws what the source throws.
[[nodiscard]] QuidOwner readOwner(notation::ByteSource& text, std::uint64_t object, std::uint64_t quid,
                                  std::size_t window);

/// The same, but much faster, where the quid is a property of that very object or behind it, and all lines before it
/// are usual ones; otherwise nothing.
[[nodiscard]] std::optional<QuidOwner> skimOwner(notation::ByteSource& text, std::uint64_t object, std::uint64_t quid,
                                                 std::size_t window);

/// The same of a text in memory, at a fraction of the cost; nothing if a line between has none of the forms of
/// `notation::Line`. The name at `quid` must have a quoted text behind it, and `InputWindow::readable` bytes after that
/// text must be in memory, too.
[[nodiscard]] std::optional<QuidOwner> readUsualOwner(const char* text, std::uint64_t object, std::uint64_t quid);

} // namespace source
