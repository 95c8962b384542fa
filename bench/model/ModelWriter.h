#pragma once

#include "model/Amount.h"
#include "model/Counts.h"
#include "model/Names.h"
#include "model/PetalText.h"
#include "model/Random.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// What writing a model keeps: the text, what it holds so far, and the numbers that its parts are made of.
struct ModelWriter {
    ModelWriter(std::FILE* out, Layout layout, Amount wanted, std::uint64_t seed)
        : text(out, layout), random(seed), wanted(wanted) {}

    /// Whether more than the things made so far are wanted; if bytes are, whether this share of them is not yet
    /// written.
    bool wantsMore(std::uint64_t made, double share = 1.0) const noexcept {
        return wanted.unit == Amount::Unit::things
                   ? made < wanted.number
                   : static_cast<double>(text.size()) < static_cast<double>(wanted.number) * share;
    }

    void quid() { text.quoted("quid", otherQuidOfNext()); }
    /// A reference by identifier, which an import of these models does without.
    void quidu() { text.quoted("quidu", otherQuid(random.below(nextQuid_ + 1))); }
    /// A documentation of about `length` bytes for the object whose header was written last.
    void documentation(std::size_t length);
    /// Counts a declared type once, however often it is declared. `number` tells it from the others; they are
    /// remembered in a bit each, so numbers should be small.
    void declareType(std::size_t number);

    PetalText text;
    Counts counts;
    Random random;
    Amount wanted;
    std::uint64_t nextClass = 0;
    std::uint64_t nextPackage = 0;
    std::uint64_t nextAssociation = 0;
    std::uint64_t nextFeature = 0;
    std::uint64_t nextView = 1; ///< view numbers are the file's, not the diagram's

private:
    std::string otherQuidOfNext();
    std::uint64_t nextQuid_ = 0;
    std::vector<bool> declared_;
};

} // namespace bench
