#pragma once

#include "catalog/modelRows.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace source {
class SourceMap;
}

namespace catalog {

/// The elements that objects of the files were made into, by the places of the objects. Lookups take constant time.
class ElementPlaces {
public:
    /// Does nothing if the place has an element already.
    void add(std::uint32_t file, std::uint64_t offset, std::uint32_t element) {
        elements_.try_emplace(keyOf(file, offset), element);
    }
    /// The local number of the element; 0 if there is none.
    [[nodiscard]] std::uint32_t find(std::uint32_t file, std::uint64_t offset) const {
        const auto found = elements_.find(keyOf(file, offset));
        return found != elements_.end() ? found->second : 0;
    }

private:
    static std::uint64_t keyOf(std::uint32_t file, std::uint64_t offset) {
        constexpr unsigned offsetBits = 40;
        return (std::uint64_t{file} << offsetBits) ^ offset;
    }

    std::unordered_map<std::uint64_t, std::uint32_t> elements_;
};

/// Writes the elements of a model with their parts, members and notes, in the order of the JSON document. `places` are
/// those of the model's objects, `files` the names of its files in outputs, empty for its own. Throws as
/// `writeModelRows`.
[[nodiscard]] ElementPlaces writeElementRows(const ImportedParts& parts, const source::SourceMap& places,
                                             const std::vector<std::string>& files, RowWriter& rows);

} // namespace catalog
