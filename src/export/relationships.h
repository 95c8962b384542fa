#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

class KelAssociation;
class KelAssociationRole;
class KelClass;
class KelGeneralization;

namespace exporter {

/// The relation of a part to its whole.
enum class Aggregation : std::uint8_t { none, shared, composite };

/// The role of the whole, as an index into the association's roles: the first with `isAggregate`, else, for an
/// aggregation of two roles, the first, as the bridge sets that flag for later roles only. Nothing without a whole.
[[nodiscard]] std::optional<std::size_t> wholeOf(const KelAssociation& association);
/// The aggregation of the property that role `index` describes; its type is the class of the role. The property of a
/// part is composite if its role is by value, else shared. "By value" without a whole is about generated code and does
/// not make a composition.
[[nodiscard]] Aggregation aggregationOf(const KelAssociation& association, std::size_t index);

/// How many objects may be at an end.
struct Bounds {
    std::uint32_t lower = 0;
    std::optional<std::uint32_t> upper; ///< nothing: any number
    bool isExact = true;                ///< the text is one range; false: a list, which the bounds span
};

/// Reads a multiplicity: "1", "n", "*", "0..n", "1..*", "2..5", or a list of these with commas. Nothing for an empty
/// text, and for any other; numbers go up to 2^31 - 1.
[[nodiscard]] std::optional<Bounds> boundsOf(std::string_view multiplicity);

/// A class that inherits from another one.
struct Inheritance {
    const KelClass* subtype;
    const KelClass* supertype;
    const KelGeneralization* said; ///< the first generalization that says so
};

/// The pairs of a generalization, those of its subtypes with its supertypes, without those of a class with itself.
[[nodiscard]] std::vector<Inheritance> inheritancesOf(const KelGeneralization& generalization);

} // namespace exporter
