#pragma once

#include "scanner/RuleTable.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace rose::bench {

/// How often each rule matched, in the order of the rules.
using RuleCounts = std::array<std::uint64_t, ruleCount>;

/// A scanner whose actions only count.
struct Engine {
    std::string name;
    /// Scans `file` from where it stands to its end.
    std::function<RuleCounts(std::FILE* file)> count;
};

/// The number of the rival among all engines.
inline constexpr std::size_t rivalNumber = 1;

/// Ours with the fastest set of vector instructions that this processor has, the rival, and ours with the other sets.
std::vector<Engine> allEngines();

/// What the actions of the flex scanner count in.
extern RuleCounts flexCounts;

} // namespace rose::bench
