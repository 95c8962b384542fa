#pragma once

#include <cstdint>
#include <string>

namespace rose::test {

/// A text of keywords, pieces of keywords and what can stand around them, the same for the same seed.
std::string randomText(std::uint32_t seed);

} // namespace rose::test
