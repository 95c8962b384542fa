#pragma once

#include "export/ClassKind.h"
#include "host/model/links/KelPointerHash.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <tsl/robin_map.h>
#include <vector>

class KelAssociation;
class KelClass;
class KelGeneralization;
class KelModel;

namespace exporter {
class Omissions;
}

namespace exporter::sql {

struct Decision;

/// Which classes of a model are tables or parts of one, and what they inherit.
///
/// Classes have numbers in the order of the JSON document. Made in time proportional to the model. The model must
/// outlive it and not change.
class ClassTables {
public:
    /// `choice` is a value of the option "tables". Adds classes and generalizations that no table holds to `omissions`,
    /// except enumerations, whose use is known later.
    ClassTables(const KelModel& model, const ClassKinds& kinds, std::string_view choice, Omissions& omissions,
                std::vector<Decision>& decisions);

    static constexpr std::uint32_t none = 0xFFFFFFFF;

    /// A supertype, and the first generalization that says so.
    struct Supertype {
        std::uint32_t number;
        const KelGeneralization* said;
    };

    [[nodiscard]] std::uint32_t count() const { return static_cast<std::uint32_t>(classes_.size()); }
    [[nodiscard]] const KelClass& at(std::uint32_t number) const { return *classes_[number].one; }
    /// `none` for a class that is not part of the model.
    [[nodiscard]] std::uint32_t numberOf(const KelClass* one) const;
    /// Whether objects of the class, or of its subclasses, are rows.
    [[nodiscard]] bool isStored(std::uint32_t number) const { return classes_[number].isStored; }
    [[nodiscard]] bool isEnumeration(std::uint32_t number) const {
        return classes_[number].kind == ClassKind::enumeration;
    }
    [[nodiscard]] ClassKind kindOf(std::uint32_t number) const { return classes_[number].kind; }
    /// The supertypes of a stored class that are stored, each once, without circles, in the order of the document.
    [[nodiscard]] std::span<const Supertype> supertypes(std::uint32_t number) const {
        return classes_[number].supertypes;
    }
    /// The stored classes whose first supertype it is.
    [[nodiscard]] const std::vector<std::uint32_t>& firstSubtypes(std::uint32_t number) const {
        return classes_[number].firstSubtypes;
    }
    /// The class at the end of the first supertypes.
    [[nodiscard]] std::uint32_t rootOf(std::uint32_t number) const { return classes_[number].root; }
    /// All supertypes that are stored, those farthest up first, and the class itself. Takes time proportional to them.
    [[nodiscard]] std::vector<std::uint32_t> lineOf(std::uint32_t number) const;
    /// The supertypes that are not stored, reached from the class over such ones only, those farthest up first.
    [[nodiscard]] std::vector<std::uint32_t> unstoredSupertypes(std::uint32_t number) const;

    [[nodiscard]] const std::vector<const KelAssociation*>& associations() const { return associations_; }

private:
    struct Row {
        const KelClass* one;
        ClassKind kind;
        bool isStored = false;
        std::vector<Supertype> supertypes{};
        std::vector<std::uint32_t> unstored{}; // supertypes that are not
        std::vector<std::uint32_t> firstSubtypes{};
        std::uint32_t root = none;
    };
    class Collection;

    void choose(std::string_view choice, Omissions& omissions, std::vector<Decision>& decisions);
    void link(const std::vector<const KelGeneralization*>& generalizations, Omissions& omissions);
    void cutCircles(std::vector<Decision>& decisions);
    void findRoots();

    std::vector<Row> classes_;
    tsl::robin_map<const KelClass*, std::uint32_t, KelPointerHash> numbers_;
    std::vector<const KelAssociation*> associations_;
};

} // namespace exporter::sql
