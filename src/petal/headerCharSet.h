#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace petal {

/// How much of a model file is looked at for its header.
constexpr std::size_t headLength = 4096;

/// The first `headLength` bytes of a regular file. Empty for anything else: reading would take the bytes away from
/// whoever reads a pipe next.
[[nodiscard]] std::string readHead(const std::string& path);

/// Whether a file with such first bytes is a model file.
[[nodiscard]] bool isModelHead(std::string_view head);

/// The number that `charSet` has in the first "(object Petal" of a model file's first bytes; nothing when the object
/// has none or is not complete.
[[nodiscard]] std::optional<int> headerCharSet(std::string_view head);

} // namespace petal
