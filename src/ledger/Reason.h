#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace ledger {

/// The outcome of an object or a property of a model file.
enum class Outcome : std::uint8_t { imported, changed, dropped };
inline constexpr std::array outcomeWords{"imported", "changed", "dropped"};

/// How much an outcome matters to a reader.
enum class Weight : std::uint8_t {
    bulk,   ///< counted by property
    listed, ///< has an entry
    loss,   ///< likewise, and the import supports it: a loss
};

/// Why an object or property was imported, changed or dropped. Reasons are constants, identified by their address.
struct Reason {
    Outcome outcome;
    Weight weight;
    const char* text; ///< half a sentence for people, which a detail may follow; may be empty
};

/// An outcome with its explanation.
struct Verdict {
    const Reason* reason = nullptr;
    std::string detail; ///< the subject of the reason; may be empty
};

} // namespace ledger
