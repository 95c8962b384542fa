#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace bench {

struct ModelWriter;

/// The number of the type that stands for a type left out.
inline constexpr std::size_t intType = 0;

/// A type for an attribute or a parameter: one of the language's or one of some thousand others. It is counted.
std::string anyType(ModelWriter& writer);

// Each of these belongs into the list of its kind, which the caller writes. A type counts as declared already.

/// An attribute that the caller may give more properties and ends. Without a type an import makes it an int.
void beginAttribute(ModelWriter& writer, std::string_view name, std::string_view type);
void attribute(ModelWriter& writer, std::string_view name, std::string_view type);

/// An operation of that many parameters, with all that may be said of one.
void operation(ModelWriter& writer, std::string_view name, std::size_t parameters);
/// A parameter with nothing but a name and a type.
void parameter(ModelWriter& writer, std::string_view name, std::string_view type);

/// Settings of other tools, which no import takes.
void toolProperties(ModelWriter& writer, std::size_t number);

} // namespace bench
