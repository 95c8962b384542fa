#pragma once

#include <cstdio>

namespace rose {

/// Scans `stream` from its current position to its end and builds the model from it; returns true. The stream stays
/// open and at its end. Nothing is left over from an earlier scan, not even from one that an exception cut short.
/// What the builder throws passes through; a failing read ends the process (FatalConditions.h).
bool RoseLexImport(std::FILE* stream);

} // namespace rose
