#pragma once

#include "host/text/KelString.h"
#include "ledger/Ledger.h"
#include "units/UnitTree.h"

class KelModel;

namespace ledger {

/// What is told one by one: nothing, objects and the properties that matter, or all of them.
enum class Detail : std::uint8_t { counts, named, all };

struct Choices {
    KelString encoding;          ///< of the files' texts, as the import was told
    bool encodingByFile = false; ///< each file is in the encoding that its charSet means instead
    Detail detail = Detail::named;
};

/// Holds the text of a model file and its units against the model that the import made of it.
///
/// Every object and property that the reader of the notation tells of is counted once. Nothing is taken on trust from
/// the import: what is imported was found in the model. Costs time and memory in step with the files and the model.
/// Throws `std::system_error` when a file cannot be read.
[[nodiscard]] Ledger makeLedger(const units::UnitTree& tree, const KelModel& model, const Choices& choices);

} // namespace ledger
