#pragma once

#include "model/Counts.h"
#include "model/PetalText.h"
#include "model/Random.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// What writing a model keeps: the text, what it holds so far, and the numbers that its parts are made of.
struct ModelWriter {
    ModelWriter(std::FILE* out, Layout layout, std::uint64_t wantedSize, std::uint64_t seed)
        : text(out, layout), random(seed), wantedSize(wantedSize) {}

    /// Whether this share of the wanted size is not yet written.
    bool hasRoom(double share = 1.0) const noexcept {
        return static_cast<double>(text.size()) < static_cast<double>(wantedSize) * share;
    }

    void quid() { text.quoted("quid", otherQuidOfNext()); }
    /// A documentation of about `length` bytes for the object whose header was written last.
    void documentation(std::size_t length);
    /// Counts a declared type once, however often it is declared. `number` tells it from the others; they are
    /// remembered in a bit each, so numbers should be small.
    void declareType(std::size_t number);

    PetalText text;
    Counts counts;
    Random random;
    std::uint64_t wantedSize;
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
