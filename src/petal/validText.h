#pragma once

#include <string>
#include <string_view>

namespace petal {

/// Bytes as a text for JSON: themselves when they are UTF-8; otherwise with every byte that is not spelled out, so that
/// names stay apart.
[[nodiscard]] std::string validText(std::string_view bytes);

} // namespace petal
