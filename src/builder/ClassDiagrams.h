#pragma once

class KelModelElement;

namespace rose {

/// Begins the diagram of an "(object ClassDiagram" in the current package.
void CreateClassDiagram(char* name);

/// Places a class on the current diagram under a view number; a class not known yet waits for its definition.
/// `name` may be qualified. Does nothing without a current diagram.
void AddToDiagram(char* name, long viewNumber);

/// Puts the element on the current diagram. PRECONDITION: there is one.
void showOnDiagram(KelModelElement& element);

} // namespace rose
