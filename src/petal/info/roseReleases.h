#pragma once

#include <cstdint>

namespace petal {

/// The release of Rose that writes files of this version, for people ("4.0"); null when it is not known.
[[nodiscard]] const char* roseRelease(std::int64_t version);

} // namespace petal
