#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace units {

/// The encoding of a file with that `charSet`: windows-1252 if it means none.
[[nodiscard]] const char* encodingOf(std::optional<std::int64_t> charSet);

/// Converts a text of a model file with that `charSet` to the local encoding, which file names have.
[[nodiscard]] std::string localText(std::string_view text, std::optional<std::int64_t> charSet);

} // namespace units
