#pragma once

#include "host/model/links/KelLinkCollection.h"
#include "host/model/links/KelPointerHash.h"

#include <bit>
#include <cstddef>
#include <set>
#include <string_view>
#include <tsl/robin_map.h>
#include <vector>

/// Counts the live slots of a growing row, and converts between a live slot's number and its rank among them.
///
/// A binary indexed tree: each operation costs O(log n).
class KelLiveCount {
public:
    /// The number of slots.
    [[nodiscard]] std::size_t size() const noexcept { return sums_.size(); }

    void append(bool live) {
        const std::size_t place = sums_.size() + 1;
        int sum = live ? 1 : 0;
        for (std::size_t below = place - 1; below > place - lowestBit(place); below -= lowestBit(below)) {
            sum += sums_[below - 1];
        }
        sums_.push_back(sum);
    }

    void removeLast() noexcept { sums_.pop_back(); }

    /// Marks a live slot as dead.
    void kill(std::size_t slot) noexcept {
        for (std::size_t place = slot + 1; place <= sums_.size(); place += lowestBit(place)) {
            --sums_[place - 1];
        }
    }

    /// The number of live slots before this one.
    [[nodiscard]] int rank(std::size_t slot) const noexcept {
        int sum = 0;
        for (std::size_t place = slot; place > 0; place -= lowestBit(place)) {
            sum += sums_[place - 1];
        }
        return sum;
    }

    /// The live slot with `rank` live slots before it. Precondition: there is one.
    [[nodiscard]] std::size_t select(int rank) const noexcept {
        std::size_t slot = 0;
        for (std::size_t step = std::bit_floor(sums_.size()); step > 0; step /= 2) {
            if (slot + step <= sums_.size() && sums_[slot + step - 1] <= rank) {
                slot += step;
                rank -= sums_[slot - 1];
            }
        }
        return slot;
    }

    void clear() noexcept { sums_.clear(); }

private:
    static constexpr std::size_t lowestBit(std::size_t place) noexcept { return place & (~place + 1); }

    std::vector<int> sums_; // sums_[p-1]: live slots among the lowestBit(p) slots that end with slot p-1
};

/// A large collection in the order of adding: a row of slots, one per object. A removed object leaves an empty slot.
///
/// Slots keep their numbers until the collection is empty, so that the three indexes of the row remain valid: the slot
/// of each object, the live slots, and the slots by name. Each index is made when first needed; a collection without
/// searches and removals thus takes one pointer per object.
class KelManyLinksByAdding final : public KelLinkCollection {
public:
    void insert(KelObject& object) override;
    void erase(KelObject& object) noexcept override;
    [[nodiscard]] KelObject* at(int index) const override;
    [[nodiscard]] bool holds(const KelObject& object) const override;
    [[nodiscard]] int indexOfName(const KelString& name, int from) const override;
    void beforeRename(KelObject& object) noexcept override;
    void afterRename(KelObject& object) noexcept override;
    bool expectRename(KelObject& object) override;
    [[nodiscard]] bool isFull() const noexcept override { return false; }

protected:
    [[nodiscard]] int indexOf(const KelObject& object) const override;

private:
    struct NamedSlot {
        const KelObject* object;
        std::size_t slot;
    };
    struct NameKey {
        std::string_view name;
        std::size_t slot;
    };
    struct ByNameThenSlot {
        using is_transparent = void;
        static NameKey keyOf(const NamedSlot& entry) { return {entry.object->getName().view(), entry.slot}; }
        static NameKey keyOf(const NameKey& key) { return key; }
        bool operator()(const auto& left, const auto& right) const {
            const NameKey leftKey = keyOf(left);
            const NameKey rightKey = keyOf(right);
            const int order = leftKey.name.compare(rightKey.name);
            return order != 0 ? order < 0 : leftKey.slot < rightKey.slot;
        }
    };
    using NameIndex = std::set<NamedSlot, ByNameThenSlot>;

    [[nodiscard]] bool hasHoles() const noexcept;
    [[nodiscard]] std::size_t slotAt(int index) const;
    [[nodiscard]] int indexAt(std::size_t slot) const;
    /// The object's slot, or the number of slots when the object is not held.
    [[nodiscard]] std::size_t slotOf(const KelObject& object) const;
    void forgetIndexes() noexcept;
    void indexPositions() const;
    void indexLiveSlots() const;
    void indexNames() const;

    std::vector<KelObject*> slots_; // null where an object was removed
    std::size_t firstLive_ = 0;     // every slot before it is empty
    // The indexes; empty until needed.
    mutable tsl::robin_map<const KelObject*, std::size_t, KelPointerHash> positions_;
    mutable KelLiveCount live_;
    mutable NameIndex names_;
    NameIndex::node_type renaming_; // the entry of the object whose name is changing
};
