#pragma once

#include "host/model/KelElementType.h"

#include <span>
#include <string>

class KelObject;

namespace exporter {

class OutlineLines;

/// How the outline shows the objects of one class.
struct OutlineForm {
    KelElementType type;
    std::string (*line)(const KelObject& object);
    /// Writes what stands below the line ahead of the objects inside, notes excepted; null for nothing.
    void (*linesBelow)(const KelObject& object, OutlineLines& lines);
};

[[nodiscard]] std::span<const OutlineForm> outlineForms();
/// The form of an object that an outline shows.
[[nodiscard]] const OutlineForm& outlineFormOf(const KelObject& object);

} // namespace exporter
