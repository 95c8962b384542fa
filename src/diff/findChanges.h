#pragma once

#include "diff/changes.h"

#include <string_view>
#include <vector>

namespace diff {

/// Finds what differs in the elements that are a pair, and those that have none: first what was removed, in the order
/// of the old model, then the rest in that of the new one. Takes time and memory proportional to the models and to what
/// has changed.
[[nodiscard]] std::vector<Change> findChanges(const Model& oldModel, const Model& newModel, const Matching& matching,
                                              const Shown& shown);

/// The encodings of the files that the model's origins name.
[[nodiscard]] std::vector<std::string_view> encodingsOf(const Model& model);

} // namespace diff
