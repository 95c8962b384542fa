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

/// The damages of a text: "3:5 unclosedText".
std::vector<std::string> damagesOf(std::string_view text);

/// What a reading of these bytes, whatever they are, does not keep of the reader's contract; empty when it keeps all.
/// The same bytes are read in blocks of several sizes and through a small window as well.
std::string notationFault(const std::uint8_t* bytes, std::size_t size);

} // namespace notation::test
