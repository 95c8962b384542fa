#pragma once

#include <cstdio>

namespace rose {

/// Scans `stream` from its current position to its end and builds the model from it; returns true. The stream stays
/// open and at its end. Nothing is left over from an earlier scan, not even from one that an exception cut short.
/// What the builder throws passes through; a failing read ends the process (FatalCondition).
bool RoseLexImport(std::FILE* stream);

/// Scans the input from where it stands to its end, calling the builder for every keyword in the order of the file;
/// returns 0. The stream is `yyin`. What the builder throws passes through. Must not be called by an action.
int yylex();

/// Makes rule `number` act on the current match if its guards let it.
void dispatch(int number);

} // namespace rose
