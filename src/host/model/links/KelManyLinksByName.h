#pragma once

#include "host/containers/KelNameLinkTree.h"
#include "host/model/links/KelLinkCollection.h"
#include "host/model/links/KelPointerHash.h"
#include "host/text/KelTextHash.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <tsl/robin_map.h>
#include <utility>
#include <vector>

/// Objects gathered in a row that is put in name order when the order is first asked for.
///
/// Gathering and finding by name cost O(1), whatever order the objects come in; sorting costs O(n log n), once, as
/// long as nothing but the last object is taken out and no object is added out of order after that.
class KelNameRow {
public:
    [[nodiscard]] bool isSorted() const noexcept { return isSorted_; }
    [[nodiscard]] const std::vector<KelObject*>& objects() const noexcept { return objects_; }
    /// Whether adding the object keeps what `sort` has done.
    [[nodiscard]] bool takesNext(const KelObject& object) const;
    void add(KelObject& object);
    void removeLast() noexcept;
    /// Takes out an object that is held, by walking.
    void remove(const KelObject& object) noexcept;
    void clear() noexcept;
    /// Puts the objects in name order; equal names stay in the order of adding. Needs no memory.
    void sort() noexcept;
    /// To be called when names may have changed.
    void forgetOrder() noexcept;
    /// The first object of that name, or null.
    [[nodiscard]] KelObject* firstNamed(const KelString& name);
    /// In the sorted row, the index of the first object whose name is not less.
    [[nodiscard]] int lowerBound(const KelString& name) const noexcept;

private:
    using NamedObject = std::pair<std::string_view, KelObject*>;
    static constexpr bool storesHash = true; // names of one length would otherwise be compared letter by letter
    using FirstByName = tsl::robin_map<std::string_view, KelObject*, KelTextHash, std::equal_to<>,
                                       std::allocator<NamedObject>, storesHash>;

    void indexNames();

    std::vector<KelObject*> objects_;
    std::optional<FirstByName> firstByName_; // keyed by the object's own text; made when needed
    bool isSorted_ = false;
};

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
