#pragma once

#include "ledger/Ledger.h"

#include <string>
#include <vector>

class KelModel;

/// Keeps the entries of a ledger.
struct KeptEntries final : ledger::EntrySink {
    void take(const ledger::Ledger& /*ledger*/, const ledger::Entry& entry) override { entries.push_back(entry); }

    std::vector<ledger::Entry> entries;
};

/// Whether the entries of each file come in the order of its text.
[[nodiscard]] bool areInOrder(const std::vector<ledger::Entry>& entries);

/// Whether a ledger accounts for every object of the finished model, by type; empty when it does.
[[nodiscard]] std::string accountFault(const ledger::Ledger& ledger, KelModel& model);
