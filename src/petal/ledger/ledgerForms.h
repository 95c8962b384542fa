#pragma once

#include "ledger/Ledger.h"
#include "text/BufferedOutput.h"

#include <string>
#include <string_view>

namespace petal {

/// Writes the ledger as JSON objects, one a line (docs/ledger.md).
void writeLedgerLines(const ledger::Ledger& ledger, text::BufferedOutput& output);
/// Writes the ledger for a person, without what was imported as it is. It drives no terminal.
void writeLedgerTable(const ledger::Ledger& ledger, text::BufferedOutput& output);
/// Three lines that say how much was imported, changed and dropped.
[[nodiscard]] std::string ledgerSummary(const ledger::Ledger& ledger);

/// What the last line of a ledger begins with.
constexpr std::string_view ledgerEnd = R"({"entry":"total")";

/// What a reason says, with its detail.
[[nodiscard]] std::string reasonText(const ledger::Reason& reason, const std::string& detail);
/// "c3 28".
[[nodiscard]] std::string hexText(const std::string& bytes);

} // namespace petal
