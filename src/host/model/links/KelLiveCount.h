#pragma once

#include <bit>
#include <cstddef>
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
