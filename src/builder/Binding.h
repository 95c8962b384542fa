#pragma once

namespace rose {

/// The "supplier" line, which means a different thing in each construct: the class at an association's end, the
/// other end of a relationship, of its view, or the element that a note annotates. `text` is a class name, which
/// may be qualified, or a view number followed by a tab; the tab may be overwritten.
void CreateBinding(char* text);

} // namespace rose
