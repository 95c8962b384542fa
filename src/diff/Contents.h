#pragma once

#include "diff/Matching.h"
#include "diff/likeness.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace diff {

class Referrers;

/// One of two models: 0 the old one, 1 the new one.
using Side = std::size_t;

/// What the elements of two models have in them, comparable between the models: references to elements that are a pair
/// are equal. Used by one thread.
class Contents {
public:
    /// Reads `matching` as it is at each call; the models and it must live as long.
    Contents(const std::array<const Model*, 2>& models, const Matching& matching);
    Contents(const Contents&) = delete;
    Contents& operator=(const Contents&) = delete;
    ~Contents();

    /// A hash, never 0, of what an element has and what is in it, but its name. Of a large element its beginning.
    [[nodiscard]] std::uint64_t hashOf(Side side, ElementId top) const;
    /// The features of elements: their fields, what is in them, who refers to them and, for parts, their neighbours.
    [[nodiscard]] std::vector<Profile> profilesOf(Side side, std::span<const ElementId> ids);

private:
    using Hash = std::uint64_t;

    [[nodiscard]] bool isMatched(Side side, ElementId id) const {
        return (side == 0 ? matching_.newOf : matching_.oldOf)[id] != noElement;
    }
    [[nodiscard]] Hash hashOfTarget(Side side, ElementId target) const;
    [[nodiscard]] Hash hashOfOne(Side side, const Field& field) const;
    template <class Take>
    void hashField(Side side, const Field& field, Take take) const;
    template <class Add>
    void addFeatures(Side side, ElementId id, Add add);
    template <class Add>
    void addNeighbours(Side side, ElementId id, Add add);
    template <class Add>
    void addReferrers(Side side, ElementId id, Add add);

    std::array<const Model*, 2> models_;
    const Matching& matching_;
    std::array<std::unique_ptr<Referrers>, 2> referrers_; // made when they are needed
    std::array<ElementId, 2> neighboursOf_{noElement, noElement};
    std::array<std::vector<ElementId>, 2> neighbours_; // of the elements in that owner
};

} // namespace diff
