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

/// Adds the options about the ledger of an import to a command. `request` must live until the command is parsed.
void describeLedgerOptions(CLI::App& command, ImportRequest& request);

/// Makes the ledger of an import, if one is needed, writes it and checks the conditions of --fail-on.
class LedgerReport {
public:
    /// Throws a `Failure` with the outcome `wrongUsage` when the request cannot be fulfilled. `request` must live as
    /// long. With `isKept` the ledger is made whatever the request says, for `getKept`.
    LedgerReport(const ImportRequest& request, bool isKept);

    /// Whether a ledger is needed, so that the import must be traced.
    [[nodiscard]] bool isWanted() const;
    /// Makes the ledger of a finished import whose texts were in `encoding`. Writes the entries to the requested output
    /// while it is made, and the summary to standard error. Requires that `trace` has been located. Does nothing unless
    /// a ledger is wanted. Throws a `Failure` with the outcome `outputFailed`, or `unexpected` when the files cannot be
    /// read again. `begin` as for `makeLedger`.
    void make(const ModelSource& source, const source::Trace& trace, const KelModel& model, const KelString& encoding,
              const ledger::BeginReading& begin = {});
    /// The finished ledger with its entries; nothing unless it is kept.
    [[nodiscard]] std::optional<ledger::KeptLedger> getKept() const;
    /// Returns `checkTripped` and reports on standard error when a condition of --fail-on is met; else returns
    /// `success`.
    [[nodiscard]] Outcome check(std::uint64_t warnings, std::uint64_t omissions) const;
    /// The number of dropped objects; 0 when no ledger was made.
    [[nodiscard]] std::uint64_t getDropped() const;
    /// The number of losses; 0 when no ledger was made.
    [[nodiscard]] std::uint64_t getLosses() const { return ledger_ ? ledger_->losses : 0; }

private:
    [[nodiscard]] bool isNeeded() const;
    void write(const ModelSource& source, const source::Trace& trace, const KelModel& model,
               const ledger::Choices& choices, const ledger::BeginReading& begin);

    const ImportRequest& request_;
    bool isKept_;
    bool canRead_; // whether the file can be read a second time
    ledger::EntryKeeper keeper_;
    std::optional<ledger::Ledger> ledger_;
};

} // namespace petal
