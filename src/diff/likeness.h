#pragma once

#include "diff/Model.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace diff {

/// Something that an element has and that makes it like others.
struct Feature {
    std::uint64_t hash;
    std::uint32_t weight;
};

/// An element with its features, sorted by their hashes.
struct Profile {
    ElementId id;
    std::vector<Feature> features;
    std::uint64_t total = 0; ///< of the weights
};

/// The elements alike by at least 60 in 100 of their weights, of which each is the only best for the other: pairs of
/// one of `ones` and one of `others`. Takes time n log n of the features, as only features that few have make
/// candidates.
[[nodiscard]] std::vector<std::pair<ElementId, ElementId>> pairsAlike(const std::vector<Profile>& ones,
                                                                      const std::vector<Profile>& others);

} // namespace diff
