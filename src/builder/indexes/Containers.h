#pragma once

class KelDesignPackage;
class KelDiagram;
class KelModelElement;
class KelModelObject;
class KelObject;

namespace rose {

class ContainerIndex;

/// Every change of what diagrams and packages hold, and of view numbers, goes through here, so that the indexes
/// of the containers that are searched stay in step.
///
/// The diagram searched is always the current one, so there is one diagram index at a time; the packages searched
/// keep theirs. An index is made when its container is first searched.

/// Adds an element to a diagram; false when the diagram refuses it.
bool draw(KelDiagram& diagram, KelModelElement& element);
/// Adds an element to a package; false when the package refuses it.
bool place(KelDesignPackage& package, KelModelElement& element);
/// Gives the object a view number.
void setViewNumber(KelModelObject& object, int viewNumber);

[[nodiscard]] const ContainerIndex& indexOf(KelDiagram& diagram);
[[nodiscard]] const ContainerIndex& indexOf(KelDesignPackage& package);

/// Takes an element that is being deleted out of the indexes.
void forgetElement(KelModelElement& element) noexcept;
void clearContainerIndexes() noexcept;

} // namespace rose
