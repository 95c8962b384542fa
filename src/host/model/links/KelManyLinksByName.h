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

/// A row of objects that is sorted by name when the order is first needed.
///
/// Adding and searching by name cost O(1) in any order of names. Sorting costs O(n log n). It happens once, as long as
/// afterwards only the last object is removed and no object is added out of order.
class KelNameRow {
public:
    [[nodiscard]] bool isSorted() const noexcept { return isSorted_; }
    [[nodiscard]] const std::vector<KelObject*>& objects() const noexcept { return objects_; }
    /// Whether the row remains sorted, if it is, when the object is added.
    [[nodiscard]] bool takesNext(const KelObject& object) const;
    void add(KelObject& object);
    void removeLast() noexcept;
    /// Removes an object by linear search. Precondition: it is held.
    void remove(const KelObject& object) noexcept;
    void clear() noexcept;
    /// Sorts by name; equal names remain in the order of adding. Slower, but complete, when memory is short.
    void sort() noexcept;
    /// Call it when names may have changed.
    void forgetOrder() noexcept;
    /// The first object of that name, or null.
    [[nodiscard]] KelObject* firstNamed(const KelString& name);
    /// The index of the first object whose name is not less. Precondition: the row is sorted.
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

/// A large collection in name order: a row while objects are only added and then only read, and a name tree as soon as
/// the order of objects changes.
///
/// An object's node in the tree is found by its name; when many objects have one name, an index of the nodes by object
/// is made. Access by consecutive indexes goes from node to node.
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
    /// The position of the last access by index; invalid after every change.
    struct Position {
        KelRBTree::Node* node = nullptr;
        int index = -1;
    };

    /// Moves the objects into the tree if memory suffices; whether they are in it.
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
