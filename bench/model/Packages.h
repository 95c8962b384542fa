#pragma once

#include <cstdint>

namespace bench {

struct ModelWriter;

// A package is written in this order: its classes and associations, packages within it, then, after `beginDiagrams`,
// its diagrams.

void beginPackage(ModelWriter& writer, std::uint64_t number);
void beginDiagrams(ModelWriter& writer);
void endPackage(ModelWriter& writer);

} // namespace bench
