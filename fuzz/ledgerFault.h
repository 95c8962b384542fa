#pragma once

#include "ledger/makeLedger.h"

#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

/// How many objects and properties files hold, by the account of the notation's reader.
struct SourceCounts {
    std::uint64_t objects = 0;
    std::uint64_t properties = 0;

    void add(const units::ResolvedFile& file);
    bool operator==(const SourceCounts&) const = default;
};

/// What is wrong with a ledger, and with how it is written; empty when nothing is. It must tell of each of what there
/// is once, in order.
[[nodiscard]] std::string ledgerFault(const ledger::Ledger& ledger, const std::vector<ledger::Entry>& entries,
                                      ledger::Detail detail, const SourceCounts& there);

} // namespace fuzz
