#pragma once

#include "host/model/KelClassCategoryType.h"

#include <cstdint>

namespace exporter {

/// The words that exports use for the repository's numbers. Each is null for a number that has no word.

[[nodiscard]] const char* visibilityWord(std::int32_t visibility);
/// Unspecified containment has no word.
[[nodiscard]] const char* containmentWord(std::int32_t containment);
[[nodiscard]] const char* categoryWord(KelClassCategoryType category);

} // namespace exporter
