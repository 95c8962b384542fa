#pragma once

#include "host/model/KelObject.h"

#include <span>
#include <vector>

namespace exporter {

/// One kind of objects that exports write inside the object that owns them.
struct Part {
    const char* member; // the JSON member that lists them
    /// Appends those of `owner` in the order in which they are written. `owner` is of the part's owning class.
    void (*collect)(const KelObject& owner, std::vector<const KelObject*>& into);
};

/// What is written inside an object, in this order.
using PartsOf = std::span<const Part> (*)(const KelObject& owner);

/// The order of the JSON document.
[[nodiscard]] std::span<const Part> documentParts(const KelObject& owner);
/// The order of the outline: types come last, and an operation's arguments stand in its own line.
[[nodiscard]] std::span<const Part> outlineParts(const KelObject& owner);

} // namespace exporter
