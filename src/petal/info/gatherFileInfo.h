#pragma once

#include "notation/ByteSource.h"
#include "petal/info/FileInfo.h"

namespace petal {

/// How many damages and how many kinds of objects are told one by one; further kinds are counted as `otherKinds`.
inline constexpr std::size_t mostDamages = 1000;
inline constexpr std::size_t mostKinds = 10'000;
inline constexpr const char* otherKinds = "(others)";

/// Reads a file to its end, unless it is no model file. Throws `std::system_error` when it cannot be read.
[[nodiscard]] FileInfo gatherFileInfo(notation::ByteSource& source);

} // namespace petal
