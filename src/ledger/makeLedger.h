#pragma once

#include "host/text/KelString.h"
#include "ledger/Ledger.h"
#include "source/Trace.h"
#include "units/RootPackage.h"
#include "units/UnitTree.h"

#include <functional>

class KelModel;

namespace ledger {

/// What is told one by one: nothing, objects and the properties that matter, or all of them.
enum class Detail : std::uint8_t { counts, named, all };

struct Choices {
    KelString encoding;          ///< of the files' texts, as the import was told
    bool encodingByFile = false; ///< each file is in the encoding that its charSet means instead
    Detail detail = Detail::named;
    const units::RenamedRoot* root = nullptr; ///< the root category that the import got under another name, if any
};

/// Merges the text of a model's files with the steps that an import took because of it.
///
/// Every object and property that the reader of the notation tells of is counted once. `trace` has been located, and
/// `model` is what the import made. `entries` gets what is told one by one; null when the detail is `counts`. Costs
/// time in proportion to the files, and memory in proportion to the trace, however many lines there are. Throws
/// `std::system_error` when a file cannot be read, and what `entries` throws.
[[nodiscard]] Ledger makeLedger(const units::UnitTree& tree, const source::Trace& trace, const KelModel& model,
                                const Choices& choices, EntrySink* entries);

/// Calls `take` for every run of bytes that the encoding of its file lacks, in the order of the files.
void forEachBadBytes(const units::UnitTree& tree, const Choices& choices,
                     const std::function<void(const BadBytes&)>& take);

} // namespace ledger
