#pragma once

#include "ledger/Ledger.h"
#include "text/Output.h"

#include <string>
#include <string_view>

namespace petal {

/// An output form of a ledger. The functions are called in their order: all entries, then all bytes, then the end. They
/// throw what `output` throws.
struct LedgerForm {
    void (*writeEntry)(const ledger::Ledger& ledger, const ledger::Entry& entry, text::BufferedOutput& output);
    void (*writeBytes)(const ledger::Ledger& ledger, const ledger::BadBytes& bytes, text::BufferedOutput& output);
    /// Writes the damages and the totals.
    void (*writeEnd)(const ledger::Ledger& ledger, text::BufferedOutput& output);
};
/// JSON objects, one per line (docs/ledger.md).
extern const LedgerForm ledgerLines;
/// A table for people, without the imported objects and properties. It contains no control characters.
extern const LedgerForm ledgerTable;
/// The summary for people: three lines of totals.
[[nodiscard]] std::string ledgerSummary(const ledger::Ledger& ledger);

/// The start of the last line of a complete ledger in JSON lines.
constexpr std::string_view ledgerEnd = R"({"entry":"total")";

/// The text of a reason, followed by its detail.
[[nodiscard]] std::string reasonText(const ledger::Reason& reason, const std::string& detail);
/// Bytes in hexadecimal: "c3 28".
[[nodiscard]] std::string hexText(const std::string& bytes);

} // namespace petal
