#pragma once

#include "host/KelApi.h"

#include <cstdint>
#include <optional>

/// The encoding of a model file whose header has the Windows character set number `charSet`: an identifier of
/// `BLIB::BP_ENCODING_ENUM`, a constant. Null for a header without a number, for an unknown number, and for an encoding
/// that the conversion service does not have. Any number of threads may call this; it does not throw.
[[nodiscard]] KEL_API const char* charSetEncoding(std::optional<std::int64_t> charSet);
