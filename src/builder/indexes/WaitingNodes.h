#pragma once

class KelLinkTree;
class KelModelElement;
class KelNameLinkTree;
class KelString;

/// Where the elements of `toBeClasses` and `toBeAssociations` stand in their trees. Any number of waiting classes
/// may bear the same name, so that a search of the tree for one of them would walk them all.
///
/// Of the trees only one is ordered by names; its elements are found by name without going down the tree.
namespace rose::WaitingNodes {

/// Adds an element to the list it waits in, the only one it is in.
void add(KelLinkTree& list, const KelModelElement& element);
void add(KelNameLinkTree& list, const KelModelElement& element);
/// The first element of that name, or null. Elements are not renamed while they wait.
[[nodiscard]] KelModelElement* findFirst(const KelNameLinkTree& list, const KelString& name);
/// Takes an element off the list it waits in. Does nothing if it does not wait.
void remove(KelLinkTree& list, const KelModelElement& element) noexcept;
void remove(KelNameLinkTree& list, const KelModelElement& element) noexcept;
/// Forgets all of them. The lists stay as they are.
void clear() noexcept;

} // namespace rose::WaitingNodes
