#pragma once

class KelLinkTree;
class KelModelElement;

/// Where the elements of `toBeClasses` and `toBeAssociations` stand in their trees. Any number of waiting classes
/// may bear the same name, so that a search of the tree for one of them would walk them all.
namespace rose::WaitingNodes {

/// Adds an element to the list it waits in, the only one it is in.
void add(KelLinkTree& list, const KelModelElement& element);
/// Takes an element off the list it waits in. Does nothing if it does not wait.
void remove(KelLinkTree& list, const KelModelElement& element) noexcept;
/// Forgets all of them. The lists stay as they are.
void clear() noexcept;

} // namespace rose::WaitingNodes
