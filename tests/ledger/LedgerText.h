#pragma once

#include "ledger/makeLedger.h"
#include "support/ImportedModel.h"

#include <string>
#include <string_view>
#include <vector>

/// The ledger of an import, made in this process.
struct LedgerText {
    std::string failure; // of the import, or of the ledger to account for the model
    ledger::Ledger ledger;
    std::vector<ledger::Entry> entries;
    std::vector<ledger::BadBytes> badBytes;

    /// Of a file with `elements` in its logical view and `diagrams` among its presentations. Both begin on a line of
    /// their own; the elements on the line `firstLine`.
    [[nodiscard]] static LedgerText of(std::string_view elements, std::string_view diagrams = "",
                                       const char* encoding = "windows-1252");
    static constexpr std::uint64_t firstLine = 8;

    /// A line for each entry that was not imported as it is: its line from the first of the elements on as 1, its kind,
    /// name and property, the outcome ("LOST" for a loss that is dropped) and the reason.
    [[nodiscard]] std::string exceptions() const;
};
