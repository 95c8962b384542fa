#pragma once

#include "host/model/links/KelPointerHash.h"
#include "notation/Place.h"

#include <cstdint>
#include <string>
#include <tsl/robin_map.h>
#include <utility>
#include <vector>

class KelObject;

namespace source {

/// The place of the object of a model file from which an object of the model was made or, if there is none, of the one
/// that caused it.
struct SourcePlace {
    std::uint32_t file = 0; ///< index into `SourceMap::getFiles`; 0 is the model's own file
    notation::Place begin;  ///< of its "("
    std::uint64_t end = 0;  ///< the offset after its ")"
    std::string quid;       ///< as in the file; empty if there is none, or if the place is that of a cause
};

/// The places in the files that the objects of a finished model come from.
///
/// Owns its places; the objects are only keys, so the map must not outlive the model, and the model must not change
/// meanwhile. Several threads may read it at a time. A lookup takes constant time. What `find` returns is valid until
/// the next `add`.
class SourceMap {
public:
    SourceMap() = default;
    explicit SourceMap(std::vector<std::string> files) : files_(std::move(files)) {}

    /// The files of the model: the model file, then those of its units. Paths are the bytes that the shell gave.
    [[nodiscard]] const std::vector<std::string>& getFiles() const { return files_; }
    /// The place of an object; null if no object of the files is known to have caused it.
    [[nodiscard]] const SourcePlace* find(const KelObject& object) const {
        const auto found = indexes_.find(&object);
        return found != indexes_.end() ? &places_[found->second] : nullptr;
    }
    /// The number of objects that have places.
    [[nodiscard]] std::size_t getCount() const { return places_.size(); }
    /// For so many objects.
    void reserve(std::size_t count) {
        indexes_.reserve(count);
        places_.reserve(count);
    }
    /// Does nothing if the object has a place already.
    void add(const KelObject& object, SourcePlace place) {
        if (indexes_.try_emplace(&object, static_cast<std::uint32_t>(places_.size())).second) {
            places_.push_back(std::move(place));
        }
    }

private:
    std::vector<std::string> files_;
    std::vector<SourcePlace> places_; // beside each other like the objects in the files
    tsl::robin_map<const KelObject*, std::uint32_t, KelPointerHash> indexes_;
};

} // namespace source
