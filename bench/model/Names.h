#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bench {

class Random;

// Every name is made of its number, so a model can refer to what was written long ago, or is still to come, without
// remembering it. Letters beyond ASCII are in windows-1252. No text holds a word that means something to an import.

std::string className(std::uint64_t number);
std::string packageName(std::uint64_t number);
std::string featureName(std::uint64_t number);
std::string_view parameterName(std::uint64_t number); ///< a word: there are few
std::string typeName(std::uint64_t number);

/// The identifier of the association of that number, of twelve hexadecimal digits.
std::string associationQuid(std::uint64_t number);
/// An identifier for anything else; no association has one like it.
std::string otherQuid(std::uint64_t number);

/// Words that make a text of at least `length` bytes, and little more.
std::string sentence(Random& random, std::size_t length);

} // namespace bench
