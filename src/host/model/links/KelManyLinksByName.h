#pragma once

#include "host/containers/KelNameLinkTree.h"
#include "host/model/links/KelLinkCollection.h"
#include "host/model/links/KelPointerHash.h"
#include "host/text/KelTextHash.h"

#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <tsl/robin_map.h>
#include <tsl/robin_set.h>
#include <vector>

/// A row of objects that is sorted by name when the order is first needed.
///
/// Adding and searching by name cost O(1) in any order of names. Sorting costs O(n log n). It happens once, as long as
/// afterwards objects are removed from the ends only and none is added out of order. An object that is removed from the
/// start keeps its place in memory until the row is sorted again or empty.
class KelNameRow {
public:
    [[nodiscard]] std::span<KelObject* const> objects() const noexcept { return std::span(objects_).subspan(start_); }
    /// Whether the row remains sorted, if it is, when the object is added.
    [[nodiscard]] bool takesNext(const KelObject& object) const;
    void add(KelObject& object);
    /// Removes the object if it is the last one, or the first of a row that is sorted; whether it was.
    bool removeFromEnd(const KelObject& object) noexcept;
    /// Removes an object by linear search. Precondition: it is held.
    void remove(const KelObject& object) noexcept;
    void clear() noexcept;
    /// Sorts by name; equal names remain in the order of adding. Slower, but complete, when memory is short.
    void sort() noexcept;
    /// Call it when names may have changed.
    void forgetOrder() noexcept;
    /// Call it before the names of several objects change.
    void forgetNames() noexcept { firstByName_.reset(); }
    /// Moves these objects, which `KelRenaming` has renamed, to the end, in their order. Needs no memory.
    void moveToEnd(std::span<KelObject* const> renamed) noexcept;
    /// The first object of that name, or null.
    [[nodiscard]] KelObject* firstNamed(const KelString& name);
    /// The index of the first object whose name is not less. Precondition: the row is sorted.
    [[nodiscard]] int lowerBound(const KelString& name) const noexcept;

private:
    static std::string_view nameOf(const KelObject* object) { return object->getName().view(); }
    static std::string_view nameOf(std::string_view name) { return name; }
    struct HashOfName {
        std::size_t operator()(const auto& named) const noexcept { return KelTextHash()(nameOf(named)); }
    };
    struct EqualNames {
        using is_transparent = void;
        bool operator()(const auto& left, const auto& right) const { return nameOf(left) == nameOf(right); }
    };
    static constexpr bool storesHash = true; // the objects of other names would otherwise be read
    using FirstByName = tsl::robin_set<KelObject*, HashOfName, EqualNames, std::allocator<KelObject*>, storesHash>;

    void indexNames();
    void closeGap() noexcept;

    std::vector<KelObject*> objects_;
    std::size_t start_ = 0;                  // the objects before it have been removed
    std::optional<FirstByName> firstByName_; // made when needed
    bool isSorted_ = false;
    std::size_t inOrder_ = 0; // of a row that is not sorted: this many objects at the start are
};

/// A large collection in name order: a row while objects are only added, read, removed from the ends, or renamed many
/// at once, and a name tree as soon as the order of objects changes otherwise.
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
    bool expectRename(KelObject& object) override;
    void afterRenames(bool areRenamed) noexcept override;
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
    std::vector<KelObject*> expected_;    // in the row, to be renamed together
    mutable Position walk_;
    mutable tsl::robin_map<const KelObject*, KelRBTree::Node*, KelPointerHash> nodes_; // empty until needed
};
