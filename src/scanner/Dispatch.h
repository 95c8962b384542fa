#pragma once

namespace rose {

/// Scans the input from where it stands to its end, calling the builder for every keyword in the order of the file;
/// returns 0. The stream is `yyin`. What the builder throws passes through. Must not be called by an action.
int yylex();

/// Makes rule `number` act on the current match if its guards let it.
void dispatch(int number);

} // namespace rose
