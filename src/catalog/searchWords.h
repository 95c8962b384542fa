#pragma once

#include <string>
#include <string_view>

namespace catalog {

/// The words for the full-text index that are in a name and a documentation, but that a tokenizer by letters and digits
/// does not find: the parts of joined words (Customer, Order and Line of CustomerOrderLine), and of scripts without
/// blanks between words (Chinese, Japanese) each character, two and three in a row. Each word once, in the order of the
/// texts, with blanks between them. The texts are UTF-8. Takes time and memory proportional to them.
[[nodiscard]] std::string searchWords(std::string_view name, std::string_view documentation);

} // namespace catalog
