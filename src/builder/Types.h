#pragma once

class KelString;
class KelType;

namespace rose {

/// The "type" of the active attribute (and its shadow) or argument: the model's type of that simple name, made if there
/// is none. `text` may be qualified; null does nothing.
void ConnectType(char* text);

/// The "result" of the current operation: the model's type of exactly that name, made if there is none. Does nothing
/// without a current operation.
void ConnectReturnType(char* text);

/// The "(value Text" of a class: a text such as {Red,Green=2,Blue} turns the class into an enumerated type of its name.
/// A text without braces or with only one literal changes nothing.
void CreateEnumType(char* text);

/// The model's first type of that name, or null. Costs O(log n).
[[nodiscard]] KelType* findType(const KelString& name);

} // namespace rose
