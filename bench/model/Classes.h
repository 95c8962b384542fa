#pragma once

#include <cstdint>

namespace bench {

struct ModelWriter;

/// A class that the caller fills and ends, with its identifier, and in this share of them that of another tool.
void beginClass(ModelWriter& writer, std::uint64_t number, unsigned percentOfUuids = 0);
/// Ends a class as the tool does.
void endClass(ModelWriter& writer);

/// A whole class that holds nothing.
void emptyClass(ModelWriter& writer, std::uint64_t number);

/// A class that stands for an enumeration: an import makes it a type of that name, which must be used somewhere.
void enumeration(ModelWriter& writer, std::uint64_t number);

} // namespace bench
