#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace units {

/// The encoding of a file with that `charSet`: windows-1252 where it means none.
[[nodiscard]] const char* encodingOf(std::optional<std::int64_t> charSet);

/// A text of a model file with that `charSet` in the local encoding, in which the names of files are.
[[nodiscard]] std::string localText(std::string_view text, std::optional<std::int64_t> charSet);

} // namespace units
