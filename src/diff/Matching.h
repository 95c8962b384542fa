#pragma once

#include "diff/Model.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace diff {

/// The evidence that two elements are the same.
enum class Evidence : std::uint8_t { quid, name, content };
/// "quid", "name" or "content".
[[nodiscard]] std::string_view evidenceWord(Evidence evidence);

/// The evidence for which two elements may have different names or owners.
enum class Renames : std::uint8_t { content, quid, no };

/// The elements of two models that are the same, in pairs.
struct Matching {
    std::vector<ElementId> newOf;   ///< by the old element; `noElement` for one that was removed
    std::vector<ElementId> oldOf;   ///< by the new element; `noElement` for one that was added
    std::vector<Evidence> evidence; ///< by the old element, if it has a new one
    bool isByName = false;          ///< the models share hardly any quid, though most names: quids were not looked at
};

/// Finds the pairs, always of one kind, and each of the two models:
///
/// 1. elements that alone have their quid, by it;
/// 2. by the name in owners that are a pair. Those of one name, and the nameless, by equal content first; then those
/// with a name, and arguments and roles without one, in their order;
/// 3. in owners that are a pair, those alike in content by at least 60 in 100, if each is the only best for the other:
///    fields, what is in them, who refers to them and, for parts of classes, operations and associations, what stands
///    beside them.
///
/// Exchanging the models exchanges the pairs. Takes time n log n of the elements and no stack for their depth.
[[nodiscard]] Matching matchModels(const Model& oldModel, const Model& newModel, Renames renames);

} // namespace diff
