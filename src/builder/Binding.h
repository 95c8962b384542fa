#pragma once

namespace rose {

/// The "supplier" line, whose meaning depends on the construct: the class at an association's end, the other end of a
/// relationship or of its view, or the element that a note annotates. `text` is a class name, which may be qualified,
/// or a view number followed by a tab; the tab may be overwritten.
void CreateBinding(char* text);

} // namespace rose
