#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzz {

/// Ends the process with a line on standard error when something does not hold that must: a finding.
inline void require(bool holds, const std::string& fault) {
    if (!holds) {
        std::fprintf(stderr, "fuzz: %s\n", fault.c_str());
        std::abort();
    }
}

/// The same for those who say what is wrong, and the empty text for nothing.
inline void requireNone(const std::string& fault) {
    require(fault.empty(), fault);
}

} // namespace fuzz
