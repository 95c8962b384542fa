#pragma once

#include <cstdint>

namespace notation {

/// A place in a file. Lines and columns count from 1, columns in bytes; the offset is the number of bytes before
/// it.
struct Place {
    std::uint64_t offset = 0;
    std::uint64_t line = 1;
    std::uint64_t column = 1;

    bool operator==(const Place&) const = default;
};

} // namespace notation
