#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace ledger {

/// What became of an object or a property of a model file.
enum class Outcome : std::uint8_t { imported, changed, dropped };
inline constexpr std::array outcomeWords{"imported", "changed", "dropped"};

/// How much it matters to a reader.
enum class Weight : std::uint8_t {
    bulk,   ///< counted by property
    listed, ///< told one by one
    loss,   ///< likewise, and something that the import takes did not come through
};

/// Why something was imported, changed or dropped. Reasons are constants, and each is told from others by its address.
struct Reason {
    Outcome outcome;
    Weight weight;
    const char* text; ///< half a sentence for people; a detail may follow it; empty when there is nothing to explain
};

/// What became of something.
struct Verdict {
    const Reason* reason = nullptr;
    std::string detail; ///< what the reason is about; may be empty
};

} // namespace ledger
