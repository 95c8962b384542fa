#pragma once

#include "notation/Reader.h"

#include <string>
#include <string_view>
#include <vector>

namespace notation::test {

/// One event in a word or two, such as "type=text:int" or "<object Class 'A' @3"; pieces of a text are put together.
std::string wordsOf(const Event& event);

/// All events of a text, blanks between them.
std::string eventsOf(std::string_view text, const Reader::Settings& settings = {}, std::size_t blockSize = 65536);

/// All that the events of a text tell, a line for each.
std::string detailsOf(std::string_view text, const Reader::Settings& settings);

/// The first line of `detailsOf` that depends on `Settings::isFast`, as it is without; empty for none.
std::string slowDifference(std::string_view text, Reader::Settings settings = {});

/// The damages of a text: "3:5 unclosedText".
std::vector<std::string> damagesOf(std::string_view text);

} // namespace notation::test
