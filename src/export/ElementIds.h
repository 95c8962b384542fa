#pragma once

#include "host/model/KelNumbering.h"
#include "host/model/links/KelPointerHash.h"

#include <cstdint>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <tsl/robin_map.h>
#include <vector>

class KelModel;
class KelObject;

namespace source {
class SourceMap;
}

namespace exporter {

/// The names from the model's packages down to the element, joined with "::"; for the model itself, its name. Ends with
/// "::" if the element has no name. UTF-8, with U+FFFD for each invalid sequence. Takes time proportional to its
/// length.
[[nodiscard]] std::string qualifiedName(const KelObject& element);
/// Appends it to a text.
void appendQualifiedName(const KelObject& element, std::string& text);

/// The id of each element of a model, and of the model: the same from one import to the next as far as possible.
///
/// - An element whose quid no other element has: "q" and the quid in lower case. The id outlasts renaming and moving.
///   Quids with characters other than ASCII letters, digits, ".", "-" and "_" do not count, so every id is valid in
///   XML, in links and in file names without escapes.
/// - Any other: "n" and 16 hexadecimal digits of XXH64 (seed 0) over the word of its kind, a NUL and its qualified
///   name. The id lasts until the element or one of its owners is renamed or moved. If the id is taken, "#2", "#3" ...
///   is added to the name, in the order of the JSON document; the id then depends on the elements of the same kind and
///   name before this one, and on no others. Nameless elements of one owner share the empty name.
///
/// No two elements of a model have the same id. The model must not change while the object lives. Reading from several
/// threads is safe. Takes time and memory proportional to the model, at any depth.
class ElementIds {
public:
    /// The elements that have ids; the ids are the same in both cases.
    enum class Of : std::uint8_t { all, packagesAndClasses };

    /// How ids are found. By number is faster in a large model, and numbers the elements (`KelNumbering`): nothing else
    /// must number them while the object lives.
    enum class Find : std::uint8_t { byAddress, byNumber };

    /// Without a `source` (null) no quids are known. May throw `std::bad_alloc`.
    ElementIds(const KelModel& model, const source::SourceMap* source, Of of = Of::all, Find find = Find::byAddress);
    ElementIds(const ElementIds&) = delete;
    ElementIds& operator=(const ElementIds&) = delete;

    /// The id of the element; empty for one that has none, such as an object that the JSON document does not hold.
    [[nodiscard]] std::string idOf(const KelObject& element) const { return std::string(viewOf(element)); }
    /// The same without a copy; valid as long as this object.
    [[nodiscard]] std::string_view viewOf(const KelObject& element) const {
        if (numbers_) {
            const std::uint32_t number = numbers_->numberOf(element);
            return number != 0 ? numbered_[number - 1] : std::string_view();
        }
        const auto found = ids_.find(&element);
        return found != ids_.end() ? found->second : std::string_view();
    }

private:
    class Maker;

    std::pmr::monotonic_buffer_resource texts_; // of the ids
    std::optional<KelNumbering> numbers_;
    std::vector<std::string_view> numbered_;                                 // by number, from 1 on
    tsl::robin_map<const KelObject*, std::string_view, KelPointerHash> ids_; // without numbers
};

} // namespace exporter
