#pragma once

namespace rose {

/// The "(value Text" of a class: a text such as {Red,Green=2,Blue} turns the class into an enumerated type of its
/// name. A text without braces or with one literal only changes nothing.
void CreateEnumType(char* text);

} // namespace rose
