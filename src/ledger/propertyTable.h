#pragma once

#include "ledger/ModelIndex.h"
#include "ledger/SourceObject.h"
#include "ledger/SourceText.h"

#include <tsl/robin_map.h>

namespace ledger {

/// How much of the front of a text in the model has not been found in the file, for texts that several properties add
/// to.
using TextRests = tsl::robin_map<const KelString*, std::size_t>;

/// A property of an object that has come into the model.
struct Checked {
    const SourceObject& owner;
    const SourceValue& value;
    const KelObject& object; ///< what the owner became; of the class that its subject stands for
    SourceText& text;        ///< of the property's file
    ModelIndex& index;
    TextRests& rests;
};
using Check = Verdict (*)(const Checked& checked);

/// What becomes of a property of an imported object: either it is held against the model, or it is always the same.
struct PropertyRow {
    Subject subject; ///< `none`: of any
    std::string_view property;
    Check check;
    Reason always; ///< without a check
};

/// What the import gives a property to, whatever object it stands in.
enum class Reach : std::uint8_t {
    owner, ///< nothing but the object that it stands in
    activeObject,
    lastClass,
    lastOperation,
};
[[nodiscard]] Reach propertyReach(std::string_view property);
/// What of the kinds of objects in a file became an object of the model; `none` for what has no properties.
[[nodiscard]] Subject subjectOf(const KelObject& object);

/// The row of a property, that of any subject where the subject has none of its own, or null.
[[nodiscard]] const PropertyRow* propertyRow(Subject subject, std::string_view property);
/// What becomes of the properties of that subject that have no row.
[[nodiscard]] const Reason& otherProperties(Subject subject);

} // namespace ledger
