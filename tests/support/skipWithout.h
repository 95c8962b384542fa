#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace rose::test {

/// Skips a test that needs a program which this machine lacks; its caller returns. Where the environment has
/// PETAL_NO_SKIP, as in scripts/test.sh, which has installed the programs, the test fails.
inline void skipWithout(const std::string& missing) {
    if (std::getenv("PETAL_NO_SKIP") != nullptr) {
        FAIL() << missing;
    }
    GTEST_SKIP() << missing;
}

} // namespace rose::test
