#pragma once

namespace rose {

/// Begins an argument: of the current operation, or a template argument of a parameterized class; in any other
/// place it belongs to nothing.
void CreateArgument(char* name);

} // namespace rose
