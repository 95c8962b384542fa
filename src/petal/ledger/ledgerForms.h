#pragma once

#include "ledger/Ledger.h"
#include "text/Output.h"

#include <string>
#include <string_view>

namespace petal {

/// A form in which a ledger is written, one piece after the other in the order of the functions.
struct LedgerForm {
    void (*writeEntry)(const ledger::Ledger& ledger, const ledger::Entry& entry, text::BufferedOutput& output);
    void (*writeBytes)(const ledger::Ledger& ledger, const ledger::BadBytes& bytes, text::BufferedOutput& output);
    /// Damages and totals.
    void (*writeEnd)(const ledger::Ledger& ledger, text::BufferedOutput& output);
};
/// JSON objects, one a line (docs/ledger.md).
extern const LedgerForm ledgerLines;
/// For a person, without what was imported as it is. It drives no terminal.
extern const LedgerForm ledgerTable;
/// Three lines that say how much was imported, changed and dropped.
[[nodiscard]] std::string ledgerSummary(const ledger::Ledger& ledger);

/// What the last line of a ledger begins with.
constexpr std::string_view ledgerEnd = R"({"entry":"total")";

/// What a reason says, with its detail.
[[nodiscard]] std::string reasonText(const ledger::Reason& reason, const std::string& detail);
/// "c3 28".
[[nodiscard]] std::string hexText(const std::string& bytes);

} // namespace petal
