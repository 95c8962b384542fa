#include "scanner/FatalConditions.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace rose {

namespace {

/// In the order of `FatalCondition`.
constexpr std::array<const char*, 6> messages{
    "input in flex scanner failed",
    "fatal error - scanner input buffer overflow",
    "out of dynamic memory in yy_create_buffer()",
    "flex scanner push-back overflow",
    "fatal flex scanner internal error--no action found",
    "fatal flex scanner internal error--end of buffer missed",
};

} // namespace

void stopProcess(FatalCondition condition) {
    std::fprintf(stderr, "%s\n", messages[static_cast<std::size_t>(condition)]);
    std::exit(2);
}

} // namespace rose
