#pragma once

#include "host/text/KelString.h"
#include "ledger/Ledger.h"
#include "petal/Request.h"
#include "petal/exitStatus.h"
#include "petal/units/ModelSource.h"

#include <cstdint>
#include <optional>

namespace petal {

/// What a user is told of the ledger of an import. Nothing is made when nothing is to be told.
class LedgerReport {
public:
    /// Throws a `Failure` with the outcome `wrongUsage` when the request cannot be fulfilled. `request` must live as
    /// long.
    explicit LedgerReport(const ImportRequest& request);

    /// Makes the ledger of a finished import whose texts were in `encoding`.
    void make(const ModelSource& source, const KelModel& model, const KelString& encoding);
    /// Writes it where it was asked for, and the summary to standard error. Throws a `Failure` with the outcome
    /// `outputFailed`.
    void write() const;
    /// `checkTripped` when something has occurred that the request fails on, which is told on standard error; else
    /// `success`.
    [[nodiscard]] Outcome check(std::uint64_t warnings) const;
    /// How many objects were dropped; 0 when no ledger was made.
    [[nodiscard]] std::uint64_t getDropped() const;
    /// How many objects and properties were lost; 0 when no ledger was made.
    [[nodiscard]] std::uint64_t getLosses() const { return ledger_ ? ledger_->losses : 0; }

private:
    const ImportRequest& request_;
    bool canRead_; // the file, a second time
    std::optional<ledger::Ledger> ledger_;
};

} // namespace petal
