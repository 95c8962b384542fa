#pragma once

#include "host/text/KelString.h"
#include "ledger/makeLedger.h"
#include "petal/Request.h"
#include "petal/exitStatus.h"
#include "petal/import/ModelSource.h"

#include <cstdint>
#include <optional>

namespace CLI {
class App;
}

namespace petal {

/// Adds the options that say what is told of the ledger of an import to a command.
void describeLedgerOptions(CLI::App& command, ImportRequest& request);

/// What a user is told of the ledger of an import. Nothing is made when nothing is to be told.
class LedgerReport {
public:
    /// Throws a `Failure` with the outcome `wrongUsage` when the request cannot be fulfilled. `request` must live as
    /// long. With `isKept` the ledger is made whatever the request says, for `getKept`.
    LedgerReport(const ImportRequest& request, bool isKept);

    /// Whether the import has to be traced for it.
    [[nodiscard]] bool isWanted() const;
    /// Makes the ledger of a finished import whose texts were in `encoding`, writes it where it was asked for while it
    /// is made, and the summary to standard error. `trace` has been located. Does nothing unless it is wanted. Throws
    /// a `Failure` with the outcome `outputFailed`, or `unexpected` when the files cannot be read again.
    void make(const ModelSource& source, const source::Trace& trace, const KelModel& model, const KelString& encoding);
    /// The finished ledger with its entries; nothing unless it is kept.
    [[nodiscard]] std::optional<ledger::KeptLedger> getKept() const;
    /// `checkTripped` when something has occurred that the request fails on, which is told on standard error; else
    /// `success`.
    [[nodiscard]] Outcome check(std::uint64_t warnings, std::uint64_t omissions) const;
    /// How many objects were dropped; 0 when no ledger was made.
    [[nodiscard]] std::uint64_t getDropped() const;
    /// How many objects and properties were lost; 0 when no ledger was made.
    [[nodiscard]] std::uint64_t getLosses() const { return ledger_ ? ledger_->losses : 0; }

private:
    [[nodiscard]] bool isNeeded() const;
    void write(const ModelSource& source, const source::Trace& trace, const KelModel& model,
               const ledger::Choices& choices);

    const ImportRequest& request_;
    bool isKept_;
    bool canRead_; // the file, a second time
    ledger::EntryKeeper keeper_;
    std::optional<ledger::Ledger> ledger_;
};

} // namespace petal
