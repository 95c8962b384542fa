#pragma once

class KelLinkTree;
class KelModelElement;
class KelNameLinkTree;
class KelString;

/// The nodes of the elements of `toBeClasses` and `toBeAssociations` in their trees. Any number of waiting classes may
/// have the same name, so that a search of the tree for one of them would visit them all.
///
/// Only one of the trees is ordered by names; its elements are found by name in O(1), without descending the tree.
namespace rose::WaitingNodes {

/// Adds an element to the list that it waits in. PRECONDITION: it waits in no other.
void add(KelLinkTree& list, const KelModelElement& element);
void add(KelNameLinkTree& list, const KelModelElement& element);
/// The first element of that name, or null. Elements are not renamed while they wait.
[[nodiscard]] KelModelElement* findFirst(const KelNameLinkTree& list, const KelString& name);
/// Removes an element from the list that it waits in. Does nothing if it does not wait.
void remove(KelLinkTree& list, const KelModelElement& element) noexcept;
void remove(KelNameLinkTree& list, const KelModelElement& element) noexcept;
/// Forgets all of them. The lists stay as they are.
void clear() noexcept;

} // namespace rose::WaitingNodes
