#pragma once

#include <cstdint>
#include <string_view>

namespace bench {

struct ModelWriter;

enum class RelationshipKind : std::uint8_t { generalization, realization, dependency };

/// A list of one relationship, from the class that is being written to the class of that name.
void relationship(ModelWriter& writer, RelationshipKind kind, std::string_view supplier);

/// Draws the relationships of that kind between two classes; the numbers are those of their views on the diagram.
/// There must be just one between them.
void relationshipView(ModelWriter& writer, RelationshipKind kind, std::uint64_t client, std::uint64_t supplier);

} // namespace bench
