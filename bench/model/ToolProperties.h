#pragma once

#include <cstdint>

namespace bench {

struct ModelWriter;

// Properties that tools keep of an object, which no import takes. They come first in it.

/// The identifier that a tool has given to this share of the objects of a kind.
void uuid(ModelWriter& writer, unsigned percent);

/// Settings until the text is so long.
void settingsUpTo(ModelWriter& writer, std::uint64_t size);

} // namespace bench
