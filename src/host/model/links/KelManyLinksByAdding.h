#pragma once

#include "host/model/links/KelLinkCollection.h"
#include "host/model/links/KelPointerHash.h"

#include <bit>
#include <cstddef>
#include <set>
#include <string_view>
#include <tsl/robin_map.h>
#include <vector>

/// Counts which of a growing row of slots are live, and goes between a live slot's number and its rank.
///
/// A binary indexed tree: each operation costs O(log n).
class KelLiveCount {
public:
    /// How many slots are tracked.
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

    /// How many slots before this one are live.
    [[nodiscard]] int rank(std::size_t slot) const noexcept {
        int sum = 0;
        for (std::size_t place = slot; place > 0; place -= lowestBit(place)) {
            sum += sums_[place - 1];
        }
        return sum;
    }

    /// The live slot that has `rank` live slots before it; there must be one.
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

/// A large collection in the order of adding: a row of slots, one an object, in which taking out leaves a hole.
///
/// Slots keep their numbers until the collection is empty, so the indexes beside the row stay right: where an
/// object stands, which slots are live, and the slots by name. Each of them is made when it is first needed, so
/// a collection that is only added to and walked costs one pointer an object.
class KelManyLinksByAdding final : public KelLinkCollection {
public:
    void insert(KelObject& object) override;
    void erase(KelObject& object) noexcept override;
    [[nodiscard]] KelObject* at(int index) const override;
    [[nodiscard]] bool holds(const KelObject& object) const override;
    [[nodiscard]] int indexOfName(const KelString& name, int from) const override;
    void beforeRename(KelObject& object) noexcept override;
    void afterRename(KelObject& object) noexcept override;
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
    /// The object's slot, or the number of slots when it is not held.
    [[nodiscard]] std::size_t slotOf(const KelObject& object) const;
    void forgetIndexes() noexcept;
    void indexPositions() const;
    void indexLiveSlots() const;
    void indexNames() const;

    std::vector<KelObject*> slots_; // null where an object was taken out
    std::size_t firstLive_ = 0;     // every slot before it is a hole
    // Beside the row; empty until needed.
    mutable tsl::robin_map<const KelObject*, std::size_t, KelPointerHash> positions_;
    mutable KelLiveCount live_;
    mutable NameIndex names_;
    NameIndex::node_type renaming_; // the entry of the object whose name is changing
};
