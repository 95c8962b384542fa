#pragma once

class KelModelElement;

namespace rose {

/// Begins the diagram of an "(object ClassDiagram" in the current package.
void CreateClassDiagram(char* name);

/// Places a class on the current diagram under a view number; a class not known yet waits for its definition. `name`
/// may be qualified. Does nothing without a current diagram.
void AddToDiagram(char* name, long viewNumber);

/// Puts the element on the current diagram. PRECONDITION: there is one.
void showOnDiagram(KelModelElement& element);

/// Begins the view of an association, whose "quidu" identifies the association.
void CreateAssociationInView(char* name);

/// The "quidu" of an association view: places the association of that quid on the current diagram. Until an
/// association that has not been read yet is, the view's own is its placeholder.
void ConnectAssociationToDiagram(char* quid);

/// Each places on the current diagram every relationship of its kind between the elements with the view numbers
/// `client` and `supplierView`. They create nothing, and do nothing without a current diagram.
void addGeneralizationToDiagram(int supplierView);
void addRealizationToDiagram(int supplierView);
void addDependencyToDiagram(int supplierView);

} // namespace rose
