#pragma once

#include "host/KelApi.h"

#include <cstdint>
#include <optional>

/// The encoding of a model file whose header names the Windows character set `charSet`: an identifier of
/// `BLIB::BP_ENCODING_ENUM`, alive as long as the program. Null for a header that names none, and for a number that
/// says nothing about the encoding or stands for one that the conversion service does not have.
[[nodiscard]] KEL_API const char* charSetEncoding(std::optional<std::int64_t> charSet);
