#pragma once

#include "notation/Event.h"

#include <vector>

namespace notation {

/// The open constructs, and the repair for an object or property at a place where it is not allowed.
class Nesting {
public:
    struct Open {
        Place place;
        std::uint32_t indent = 0; // of its first line
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

    /// The number of constructs from the innermost object on, itself included; 0 if that is far out or there is none.
    [[nodiscard]] std::size_t depthInObject() const;

    /// The repair for a misplaced object or property: `ends` constructs end before it; then, with `reopens`, one that a
    /// surplus parenthesis closed is opened again.
    struct Repair {
        std::size_t ends = 0;
        bool reopens = false;
    };
    /// For an object without a key within an object. `indent` is that of its line if it is the first token there,
    /// otherwise `noIndent`.
    [[nodiscard]] Repair forObject(std::uint32_t indent) const;
    /// For a property within a construct that is not an object. The repair is empty when no object is open.
    [[nodiscard]] Repair forProperty(std::uint32_t indent) const;

    static constexpr std::uint32_t noIndent = UINT32_MAX;

private:
    [[nodiscard]] bool tellsBy(std::uint32_t indent) const;
    [[nodiscard]] std::size_t endsByIndent(std::uint32_t indent) const;

    std::vector<Open> open_;
};

} // namespace notation
