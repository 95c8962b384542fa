#pragma once

#include "host/KelApi.h"

#include <cstddef>
#include <string_view>
#include <vector>

class KelEncodingConverter;

/// A sequence of bytes that an encoding does not have.
struct InvalidBytes {
    std::size_t offset;
    std::size_t length;
};

/// The sequences in `text` that the encoding does not have, in order: those that `convertText` replaces. The converter
/// must have a handle. Throws `std::bad_alloc`.
[[nodiscard]] KEL_API std::vector<InvalidBytes> invalidBytes(KelEncodingConverter& from, std::string_view text);
