#pragma once

#include "host/text/KelTextHash.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <tsl/robin_map.h>
#include <vector>

class KelClass;
class KelModel;
class KelType;

namespace exporter {

/// Finds the class of a model that the name of a type means. Types of a model are texts: one attribute in eight has a
/// type with the name of a class and would else seem to be of a primitive type.
///
/// The first search takes time proportional to the model, and the first for a name with "::" takes n log n of the
/// classes; after that one for such a name takes logarithmic time, and one for any other name constant time. The model
/// must outlive it and not change. Reading it from several threads is safe.
class ClassNames {
public:
    explicit ClassNames(const KelModel& model) : model_(model) {}

    /// The only class whose qualified name is `name`; else the only one whose qualified name ends with "::" and
    /// `name`, which must hold "::" itself; else the only one with this simple name. Null when there is none, and when
    /// several classes match in the first of these ways that matches.
    [[nodiscard]] const KelClass* find(std::string_view name) const;
    /// The class that the type means by its name; null for a null type.
    [[nodiscard]] const KelClass* find(const KelType* type) const;
    /// All classes of this simple name, in the order of the JSON document.
    [[nodiscard]] std::vector<const KelClass*> named(std::string_view name) const;

private:
    using Index = std::uint32_t;
    static constexpr Index none = UINT32_MAX;

    struct Named {
        const KelClass* one;
        Index next = none; // of the same name
    };
    struct Chain {
        Index first;
        Index last;
    };
    struct ByEnd {
        std::string_view reversed; // the qualified name, last byte first
        const KelClass* one;
    };

    void collect() const;
    void sortByEnd() const;

    const KelModel& model_;

    // Made by the first search: models of classes without attributes need none.
    mutable std::once_flag isCollected_;
    mutable std::vector<Named> classes_; // in the order of the JSON document
    mutable tsl::robin_map<std::string_view, Chain, KelTextHash> byName_;

    // Made by the first search that needs them: most models have no types with "::" in their names.
    mutable std::once_flag isSorted_;
    mutable std::string reversedNames_;
    mutable std::vector<ByEnd> byEnd_; // sorted
};

} // namespace exporter
