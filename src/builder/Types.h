#pragma once

namespace rose {

/// The "type" of the active attribute (and its shadow) or argument: the model's type of that simple name, made if
/// need be. `text` may be qualified; null does nothing.
void ConnectType(char* text);

/// The "result" of the current operation, named by the text as it stands.
void ConnectReturnType(char* text);

} // namespace rose
