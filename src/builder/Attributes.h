#pragma once

namespace rose {

/// Begins an attribute: of the current class, or, inside a role's keys, of nothing until its caller places it.
/// An attribute whose name the class has already is refused without a message and belongs to nothing.
void CreateAttribute(char* name);

/// The "initv" of the active attribute (and its shadow) or argument.
void SetInitialValue(char* text);

} // namespace rose
