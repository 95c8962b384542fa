#pragma once

#include "notation/Event.h"

#include <vector>

namespace notation {

/// The constructs that are open, and where something belongs that cannot stand where it does.
class Nesting {
public:
    struct Open {
        Place place;
        std::uint32_t indent = 0; // of the line that it begins on
        Construct construct = Construct::object;
    };

    void push(const Open& open) { open_.push_back(open); }
    void pop() { open_.pop_back(); }
    [[nodiscard]] std::size_t depth() const { return open_.size(); }
    [[nodiscard]] bool isEmpty() const { return open_.empty(); }
    [[nodiscard]] const Open& innermost() const { return open_.back(); }
    [[nodiscard]] bool isWithin(Construct construct) const {
        return !open_.empty() && open_.back().construct == construct;
    }

    /// What makes a misplaced thing fit: this many constructs end in front of it, then perhaps one is opened again
    /// that a surplus parenthesis had closed.
    struct Repair {
        std::size_t ends = 0;
        bool reopens = false;
    };
    /// Of an object that has no key within an object. `indent` is that of its line when it is the first there,
    /// otherwise `noIndent`.
    [[nodiscard]] Repair forObject(std::uint32_t indent) const;
    /// Of a property within something that is no object. It has neither ends nor an opening when no object is open.
    [[nodiscard]] Repair forProperty(std::uint32_t indent) const;

    static constexpr std::uint32_t noIndent = UINT32_MAX;

private:
    [[nodiscard]] bool tellsBy(std::uint32_t indent) const;
    [[nodiscard]] std::size_t endsByIndent(std::uint32_t indent) const;

    std::vector<Open> open_;
};

} // namespace notation
