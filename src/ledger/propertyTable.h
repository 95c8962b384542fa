#pragma once

#include "ledger/kindTable.h"

#include <string>
#include <string_view>

class KelObject;

namespace ledger {

/// How the outcome of a property of an imported object is found.
enum class Taking : std::uint8_t {
    always, ///< it is always the row's reason
    taken,  ///< the import takes it: the reason is the row's when a step says so
    name,   ///< the model has it when it repeats the object's name; else the reason is the row's
};

struct PropertyRow {
    Subject subject; ///< `none`: of any
    std::string_view property;
    Taking taking;
    Reason reason;
    /// How the model tells the value that it has in place of one that it cannot have; null when it can have all.
    std::string (*inModel)(const KelObject& object) = nullptr;
    /// The value that the model has without being told; may be empty.
    std::string_view byDefault = {};
};

/// The row of a property, that of any subject where the subject has none of its own, or null.
[[nodiscard]] const PropertyRow* propertyRow(Subject subject, std::string_view property);
/// The reason for properties of that subject that have no row.
[[nodiscard]] const Reason& otherProperties(Subject subject);

} // namespace ledger
