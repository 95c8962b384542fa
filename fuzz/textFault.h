#pragma once

#include <string>
#include <string_view>

namespace fuzz {

/// Where a text is no UTF-8, by ICU; empty for nowhere.
[[nodiscard]] std::string utf8Fault(std::string_view text);

/// What is wrong with a text that people or programs are given: it is no UTF-8, or a control character other than the
/// newline is in it. Empty when nothing is. Told by ICU, not by the code that wrote the text.
[[nodiscard]] std::string textFault(std::string_view text);

/// What else is wrong with such a text that is to be a JSON document; empty when nothing is. The numbers that are
/// values of "id" must count up from 1, and those in lists be among them.
[[nodiscard]] std::string jsonFault(std::string_view text);

} // namespace fuzz
