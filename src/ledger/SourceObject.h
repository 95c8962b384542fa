#pragma once

#include "ledger/Ledger.h"
#include "notation/Event.h"
#include "units/UnitTree.h"

#include <string>
#include <string_view>
#include <vector>

class KelObject;

namespace ledger {

/// A property of an object that is being read.
struct SourceValue {
    PropertyTally* property = nullptr;
    std::uint32_t file = 0;
    notation::Place place;
    std::uint64_t order = 0;
    notation::EventKind kind = notation::EventKind::nothing; ///< `start` for an object or list
    const KelObject* reached = nullptr; ///< what the import gives it to when that is not the object it stands in
    std::string text; ///< bytes as they stand, where the property's row looks at them; lines are joined by LF
};

/// An object of a model file that is being read.
struct SourceObject {
    KindTally* kind = nullptr;
    std::string key;        ///< the property that it is the value of
    std::string name;       ///< bytes as they stand
    std::string secondName; ///< likewise; of a view what it shows
    std::string reference;  ///< the number behind its "@"
    std::size_t entry = 0;
    KelObject* object = nullptr;     ///< what it became; null when nothing, or while that is not known
    const Reason* dropped = nullptr; ///< why nothing in it is imported; null when that may be
    Verdict verdict;                 ///< what is known of it so far
    std::uint32_t file = 0;
    notation::Place place;
    bool isImplied = false;            ///< the file lacks its beginning: it is not counted
    const units::Unit* unit = nullptr; ///< that it stands for, or null
    PropertyTally* lastProperty = nullptr;
    std::vector<SourceValue> values;
    std::vector<SourceObject> held; ///< parts that can only be judged together with it

    [[nodiscard]] Subject subject() const { return kind->row->subject; }
    /// The first property of that name, or null.
    [[nodiscard]] const SourceValue* find(std::string_view property) const {
        for (const SourceValue& value : values) {
            if (value.property->name == property) {
                return &value;
            }
        }
        return nullptr;
    }
};

} // namespace ledger
