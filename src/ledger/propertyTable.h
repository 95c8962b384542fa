#pragma once

#include "ledger/kindTable.h"

#include <string>
#include <string_view>

class KelObject;

namespace ledger {

/// How to find the outcome of a property of an imported object.
enum class Taking : std::uint8_t {
    always, ///< always the row's reason
    taken,  ///< the import supports it: the row's reason if a step was reported
    name,   ///< imported if it repeats the object's name, otherwise the row's reason
};

struct PropertyRow {
    Subject subject; ///< `none` for any
    std::string_view property;
    Taking taking;
    Reason reason;
    /// Describes the model's value if it differs from one that the model cannot have; null if the model can have all.
    std::string (*inModel)(const KelObject& object) = nullptr;
    /// The value that the model has by default; may be empty.
    std::string_view byDefault = {};
};

/// The row of a property of the subject, otherwise the one of `none`, otherwise null.
[[nodiscard]] const PropertyRow* propertyRow(Subject subject, std::string_view property);
/// The reason for properties of that subject that have no row.
[[nodiscard]] const Reason& otherProperties(Subject subject);

} // namespace ledger
