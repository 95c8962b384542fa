#pragma once

class KelLinkTree;
class KelModelElement;

/// The nodes of the elements of `toBeAssociations` in their tree: any number of them may compare equal, so that a
/// search of the tree for one of them would visit them all.
namespace rose::WaitingNodes {

/// Adds an element to the list that it waits in. PRECONDITION: it waits in no other.
void add(KelLinkTree& list, const KelModelElement& element);
/// Removes an element from the list that it waits in. Does nothing if it does not wait.
void remove(KelLinkTree& list, const KelModelElement& element) noexcept;
/// Forgets all of them. The lists stay as they are.
void clear() noexcept;

} // namespace rose::WaitingNodes
