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

/// The object of a model file that an object of the model was made from or, without an object of its own, that caused
/// it.
struct SourcePlace {
    std::uint32_t file = 0; ///< index into `SourceMap::getFiles`; 0 is the model's own file
    notation::Place begin;  ///< of its "("
    std::uint64_t end = 0;  ///< the offset after its ")"
    std::string quid;       ///< as the file has it; empty when it has none, and when the place is that of a cause
};

/// The places that the objects of a finished model come from.
///
/// Owns its places; the objects are only keys, so the map must not outlive the model, and the model must not change
/// meanwhile. A lookup takes constant time. Reading it from several threads is safe.
class SourceMap {
public:
    SourceMap() = default;
    explicit SourceMap(std::vector<std::string> files) : files_(std::move(files)) {}

    /// The files of the model: its own, then those of its units. Paths are the bytes that the shell gave.
    [[nodiscard]] const std::vector<std::string>& getFiles() const { return files_; }
    /// Null when nothing of the files is known to have caused the object.
    [[nodiscard]] const SourcePlace* find(const KelObject& object) const {
        const auto found = places_.find(&object);
        return found != places_.end() ? &found->second : nullptr;
    }
    /// Does nothing when the object has a place already.
    void add(const KelObject& object, const SourcePlace& place) { places_.try_emplace(&object, place); }

private:
    std::vector<std::string> files_;
    tsl::robin_map<const KelObject*, SourcePlace, KelPointerHash> places_;
};

} // namespace source
