#pragma once

#include "host/model/KelClassCategoryType.h"
#include "host/model/KelElementType.h"

#include <cstdint>
#include <span>

namespace exporter {

/// The word for the kind of an element: "class", "attribute", ... Null for objects that are not elements, such as
/// notes. Base and derived types have one word, and so have candidate and foreign keys.
[[nodiscard]] const char* kindWord(KelElementType type);

/// Every class of elements with its word.
struct ElementKind {
    KelElementType type;
    const char* word;
};
[[nodiscard]] std::span<const ElementKind> elementKinds();

/// The words that outputs for programs use for the repository's numbers. Null for a number without a word, such as
/// that of an unspecified containment.

[[nodiscard]] const char* visibilityWord(std::int32_t visibility);
[[nodiscard]] const char* containmentWord(std::int32_t containment);
[[nodiscard]] const char* categoryWord(KelClassCategoryType category);

} // namespace exporter
