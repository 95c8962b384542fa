#pragma once

#include "host/containers/KelNameLinkTree.h"
#include "host/model/links/KelLinkCollection.h"
#include "host/model/links/KelNameRow.h"
#include "host/model/links/KelPointerHash.h"

#include <tsl/robin_map.h>

/// A large collection in name order: a row while it is only added to, and afterwards only read; a name tree as soon
/// as its order is changed.
///
/// In the tree an object's node is found by its name. Where many objects of one name stand together, an index of
/// the nodes by object is made when first needed. A walk by index goes from node to node.
class KelManyLinksByName final : public KelLinkCollection {
public:
    void insert(KelObject& object) override;
    void erase(KelObject& object) noexcept override;
    [[nodiscard]] KelObject* at(int index) const override;
    [[nodiscard]] bool holds(const KelObject& object) const override;
    [[nodiscard]] int indexOfName(const KelString& name, int from) const override;
    [[nodiscard]] KelObject* firstNamed(const KelString& name) const override;
    void beforeRename(KelObject& object) noexcept override;
    void afterRename(KelObject& object) noexcept override;
    [[nodiscard]] bool isFull() const noexcept override { return false; }

protected:
    [[nodiscard]] int indexOf(const KelObject& object) const override;

private:
    /// Where the last walk by index stands; forgotten at every change.
    struct Position {
        KelRBTree::Node* node = nullptr;
        int index = -1;
    };

    /// Whether the objects are in the tree, to which they are brought if there is room for it.
    [[nodiscard]] bool bringIntoTree() const noexcept;
    /// The object's node in the tree, or null when it is not held.
    [[nodiscard]] KelRBTree::Node* nodeOf(const KelObject& object) const noexcept;
    [[nodiscard]] KelRBTree::Node* searchFrom(KelRBTree::Node* first, const KelObject& object) const noexcept;
    [[nodiscard]] int indexInRow(const KelObject& object) const;
    void indexNodes() const;
    [[nodiscard]] bool isInTree() const noexcept { return tree_.getCount() > 0 || renaming_ != nullptr; }

    mutable KelNameRow row_; // empty when the objects are in the tree
    mutable KelNameLinkTree tree_;
    KelRBTree::Node* renaming_ = nullptr; // out of the tree while its object's name is changing
    mutable Position walk_;
    mutable tsl::robin_map<const KelObject*, KelRBTree::Node*, KelPointerHash> nodes_; // empty until needed
};
