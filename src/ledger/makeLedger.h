#pragma once

#include "host/text/KelString.h"
#include "ledger/BadByteSearch.h"
#include "ledger/Ledger.h"
#include "source/Trace.h"
#include "units/RootPackage.h"
#include "units/UnitTree.h"

#include <functional>

class KelModel;

namespace source {
class TracedText;
}

namespace ledger {

/// The entries of a ledger: none, objects and the properties that matter, or all of them.
enum class Detail : std::uint8_t { counts, named, all };

struct Choices {
    KelString encoding;          ///< of the files' texts, as given to the import
    bool encodingByFile = false; ///< each file is in the encoding that its charSet means instead
    Detail detail = Detail::named;
    const units::RenamedRoot* root = nullptr; ///< the root category that was renamed for the import, if any
};

/// Decides the outcome of every object and property of a model's files from the steps that an import took.
///
/// Every object and property that the notation reader reports is counted once. `model` must be the one that the import
/// made, and `trace` must have been located. `entries` receives the entries; it may be null with the detail `counts`.
/// Throws `std::system_error` when a file cannot be read, and what `entries` throws. Reads the files once; time is
/// proportional to them, memory to the trace, not to the entries. With the detail `counts` the properties of dropped
/// objects are only counted all together. `begin` is called with the text before it is read, for those who read along;
/// it may be empty.
using BeginReading = std::function<void(source::TracedText& text)>;
[[nodiscard]] Ledger makeLedger(const units::UnitTree& tree, const source::Trace& trace, const KelModel& model,
                                const Choices& choices, EntrySink* entries, const BeginReading& begin = {});

/// The encoding of a file's texts.
[[nodiscard]] KelString encodingOf(const units::ResolvedFile& file, const Choices& choices);

/// Calls `take` for every run of bytes that is invalid in the encoding of its file, in the order of the files. Reads
/// them once more. Throws as `makeLedger` does.
void forEachBadBytes(const units::UnitTree& tree, const Choices& choices, const BadByteSearch::Take& take);

} // namespace ledger
