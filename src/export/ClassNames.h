#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

class KelClass;
class KelModel;
class KelType;

namespace exporter {

/// Finds the class of a model that the name of a type means. Types of a model are texts: one attribute in eight has a
/// type with the name of a class and would else seem to be of a primitive type.
///
/// Made in time n log n of the model's classes; a search takes logarithmic time. The model must outlive it and not
/// change. Reading it from several threads is safe.
class ClassNames {
public:
    explicit ClassNames(const KelModel& model);

    /// The only class whose qualified name is `name`; else the only one whose qualified name ends with "::" and
    /// `name`, which must hold "::" itself; else the only one with this simple name. Null when there is none, and when
    /// several classes match in the first of these ways that matches.
    [[nodiscard]] const KelClass* find(std::string_view name) const;
    /// The class that the type means by its name; null for a null type.
    [[nodiscard]] const KelClass* find(const KelType* type) const;
    /// All classes of this simple name, in the order of the JSON document.
    [[nodiscard]] std::vector<const KelClass*> named(std::string_view name) const;

private:
    struct ByEnd {
        std::string reversed; // the qualified name, last byte first
        const KelClass* one;
    };
    std::vector<ByEnd> byEnd_; // sorted
    std::unordered_map<std::string_view, std::vector<const KelClass*>> byName_;
};

} // namespace exporter
