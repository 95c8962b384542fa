#pragma once

#include "ledger/Ledger.h"
#include "text/Output.h"

#include <memory>
#include <string>
#include <string_view>

namespace petal {

/// An output form of a ledger, for one ledger. The functions are called in their order: all entries, then all bytes,
/// then the end. They throw what `output` throws.
class LedgerForm {
public:
    LedgerForm() = default;
    LedgerForm(const LedgerForm&) = delete;
    LedgerForm& operator=(const LedgerForm&) = delete;
    virtual ~LedgerForm() = default;

    virtual void writeEntry(const ledger::Ledger& ledger, const ledger::Entry& entry, text::BufferedOutput& output) = 0;
    virtual void writeBytes(const ledger::Ledger& ledger, const ledger::BadBytes& bytes,
                            text::BufferedOutput& output) = 0;
    /// Writes the damages and the totals.
    virtual void writeEnd(const ledger::Ledger& ledger, text::BufferedOutput& output) = 0;
};
/// JSON objects, one per line (docs/ledger.md).
[[nodiscard]] std::unique_ptr<LedgerForm> makeLedgerLines();
/// A table for people, without the imported objects and properties. It contains no control characters.
[[nodiscard]] std::unique_ptr<LedgerForm> makeLedgerTable();
/// The summary for people: three lines of totals.
[[nodiscard]] std::string ledgerSummary(const ledger::Ledger& ledger);

/// The start of the last line of a complete ledger in JSON lines.
constexpr std::string_view ledgerEnd = R"({"entry":"total")";

/// The text of a reason, followed by its detail.
[[nodiscard]] std::string reasonText(const ledger::Reason& reason, const std::string& detail);
/// Bytes in hexadecimal: "c3 28".
[[nodiscard]] std::string hexText(const std::string& bytes);

} // namespace petal
