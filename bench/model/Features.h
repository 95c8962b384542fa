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

/// Without a type an import makes it an int.
void attribute(ModelWriter& writer, std::string_view name, std::string_view type);

/// An operation of that many parameters, with all that may be said of one.
void operation(ModelWriter& writer, std::string_view name, std::size_t parameters);
/// A parameter with nothing but a name and a type.
void parameter(ModelWriter& writer, std::string_view name, std::string_view type);

/// An attribute of a key that a role has in its list of keys. The caller counts it.
void qualifier(ModelWriter& writer, std::string_view name);

} // namespace bench
