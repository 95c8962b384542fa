#pragma once

namespace rose {

/// Begins an operation of the current class; without one it belongs to nothing.
void CreateOperation(char* name);

/// The "concurrency" of the current operation, or else of the current class. A null text does nothing.
void Concurrency(char* text);

/// Begins an argument: of the current operation, or a template argument of a parameterized class; elsewhere it belongs
/// to nothing.
void CreateArgument(char* name);

} // namespace rose
