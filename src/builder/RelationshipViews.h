#pragma once

namespace rose {

/// Each places on the current diagram every relationship of its kind between the elements that the view numbers
/// `client` and `supplierView` stand for. They create nothing, and do nothing without a current diagram.
void addGeneralizationToDiagram(int supplierView);
void addRealizationToDiagram(int supplierView);
void addDependencyToDiagram(int supplierView);

} // namespace rose
