#include "diff/likeness.h"

#include <algorithm>
#include <span>

namespace diff {

namespace {

using Hash = std::uint64_t;

constexpr std::size_t rareEnough = 8; // so many elements of each model may share a feature that makes candidates

/// How alike two elements are: weights that they share, of those that one of them has.
struct Likeness {
    std::uint64_t shared = 0;
    std::uint64_t all = 1;

    friend bool operator<(const Likeness& one, const Likeness& other) {
        return one.shared * other.all < other.shared * one.all;
    }
    [[nodiscard]] bool isEnough() const { return shared * 100 >= all * 60; }
};

Likeness likenessOf(const Profile& one, const Profile& other) {
    std::uint64_t shared = 0;
    auto mine = one.features.begin();
    auto theirs = other.features.begin();
    while (mine != one.features.end() && theirs != other.features.end()) {
        if (mine->hash < theirs->hash) {
            ++mine;
        } else if (theirs->hash < mine->hash) {
            ++theirs;
        } else {
            shared += mine->weight;
            ++mine;
            ++theirs;
        }
    }
    return {shared, std::max<std::uint64_t>(one.total + other.total - shared, 1)};
}

/// The best match of an element so far, and whether another one is as good.
struct Best {
    Likeness likeness;
    std::size_t index = 0;
    bool isOnly = false;

    void offer(const Likeness& offered, std::size_t from) {
        if (likeness < offered) {
            *this = {offered, from, true};
        } else if (!(offered < likeness)) {
            isOnly = false;
        }
    }
};

/// The pairs that share a feature which few have, so that no kind of model makes all pairs candidates.
std::vector<std::pair<std::uint32_t, std::uint32_t>> candidates(const std::vector<Profile>& ones,
                                                                const std::vector<Profile>& others) {
    using Posting = std::pair<Hash, std::uint32_t>;
    const auto postingsOf = [](const std::vector<Profile>& profiles) {
        std::vector<Posting> postings;
        for (std::uint32_t index = 0; index < profiles.size(); ++index) {
            for (const Feature& feature : profiles[index].features) {
                if (postings.empty() || postings.back() != Posting(feature.hash, index)) {
                    postings.emplace_back(feature.hash, index);
                }
            }
        }
        std::ranges::sort(postings);
        return postings;
    };
    const std::vector<Posting> mine = postingsOf(ones);
    const std::vector<Posting> theirs = postingsOf(others);
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
    for (auto at = mine.begin(); at != mine.end();) {
        const auto end = std::find_if(at, mine.end(), [&](const Posting& one) { return one.first != at->first; });
        const std::span<const Posting> found(std::ranges::lower_bound(theirs, at->first, {}, &Posting::first),
                                             std::ranges::upper_bound(theirs, at->first, {}, &Posting::first));
        if (static_cast<std::size_t>(end - at) <= rareEnough && found.size() <= rareEnough) {
            for (auto one = at; one != end; ++one) {
                for (const Posting& other : found) {
                    pairs.emplace_back(one->second, other.second);
                }
            }
        }
        at = end;
    }
    std::ranges::sort(pairs);
    pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
    return pairs;
}

} // namespace

std::vector<std::pair<ElementId, ElementId>> pairsAlike(const std::vector<Profile>& ones,
                                                        const std::vector<Profile>& others) {
    std::vector<std::pair<ElementId, ElementId>> pairs;
    std::vector<Best> bestOfOnes(ones.size());
    std::vector<Best> bestOfOthers(others.size());
    for (const auto& [one, other] : candidates(ones, others)) {
        const Likeness likeness = likenessOf(ones[one], others[other]);
        if (likeness.isEnough()) {
            bestOfOnes[one].offer(likeness, other);
            bestOfOthers[other].offer(likeness, one);
        }
    }
    for (std::size_t one = 0; one < ones.size(); ++one) {
        const Best& best = bestOfOnes[one];
        if (best.isOnly && bestOfOthers[best.index].isOnly && bestOfOthers[best.index].index == one) {
            pairs.emplace_back(ones[one].id, others[best.index].id);
        }
    }
    return pairs;
}

} // namespace diff
