#pragma once

#include "export/ClassKind.h"
#include "export/ClassNames.h"
#include "export/ElementIds.h"
#include "export/Omissions.h"
#include "host/model/links/KelPointerHash.h"
#include "host/text/KelTextHash.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <tsl/robin_map.h>
#include <vector>

class KelArgument;
class KelAssociation;
class KelAssociationRole;
class KelClass;
class KelConcreteType;
class KelGeneralization;
class KelModel;
class KelRealization;
class KelType;

namespace exporter {

struct ExportContext;

/// The metaclass of UML that a class of the model is written as.
enum class Metaclass : std::uint8_t {
    classObject,
    interface,
    enumeration,
    dataType,
    primitiveType,
    actor,
    associationClass,
};

/// Whether the predicate holds for one of the objects that `links`, a `KelLinks`, holds.
template <class Links, class Predicate>
bool holdsFor(const Links& links, Predicate predicate) {
    for (const auto* object : links) {
        if (predicate(*object)) {
            return true;
        }
    }
    return false;
}

/// "uml:Class", "uml:Interface" ...
[[nodiscard]] const char* metaclassName(Metaclass metaclass);

/// The target of the type of an element.
struct TypeTarget {
    const KelObject* element = nullptr; ///< a class or a type of the document
    std::string_view primitive;         ///< else the name of a primitive type of UML's own; empty: no type
};

/// The association class that a class and three associations of the model stand for.
struct AssociationClass {
    const KelClass* self = nullptr;
    const KelAssociation* association = nullptr; ///< the one whose ends it has
    const KelAssociation* first = nullptr;       ///< from the one end's class to `self`
    const KelAssociation* second = nullptr;      ///< from `self` to the other end's class
};

/// A generalization that the document holds within the subtype.
struct WrittenGeneralization {
    const KelGeneralization* said = nullptr;
    const KelClass* supertype = nullptr;
    bool isFirst = true; ///< the first of the pairs that `said` makes
};

/// A template and the classes or types that an instantiated class puts in place of its parameters.
struct Binding {
    const KelClass* boundTemplate = nullptr; ///< null: no binding
    std::vector<TypeTarget> actuals;
};

/// Decides what becomes of each element of a model: everything that takes more than the element itself to know.
///
/// The model, its source map and the options must outlive it; the model must not change. Made in time n log n of the
/// model, in memory proportional to it. May throw `std::bad_alloc`.
class UmlMapping {
public:
    UmlMapping(const ExportContext& context, Omissions& omissions);

    [[nodiscard]] std::string_view idOf(const KelObject& element) const { return ids_.viewOf(element); }
    [[nodiscard]] bool holds(const KelClass* one) const { return metaclasses_.contains(one); }

    /// Of a class that the document holds.
    [[nodiscard]] Metaclass metaclassOf(const KelClass& one) const { return metaclasses_.at(&one); }
    /// Whether the stereotype is a keyword, because the metaclass does not say it.
    [[nodiscard]] bool hasKeyword(const KelClass& one) const;

    [[nodiscard]] TypeTarget targetOf(const KelType* type) const;
    /// The types that the document holds, one for each name.
    [[nodiscard]] const std::vector<const KelType*>& types() const { return writtenTypes_; }
    /// Of a type that is written: for a base type the first one that the bridge derived from it under the same name,
    /// which says more, else itself.
    [[nodiscard]] const KelConcreteType& detailedOf(const KelConcreteType& written) const;

    /// Null for a class that is not an association class.
    [[nodiscard]] const AssociationClass* associationClassOf(const KelClass& one) const;
    /// The element whose ends the association's roles are: the association, the association class that it is a part
    /// of, or null if its roles are not in the document.
    [[nodiscard]] const KelObject* ownerOfEnds(const KelAssociation& association) const;
    /// The class at the role's end if the document holds it, else null.
    [[nodiscard]] const KelClass* classAt(const KelAssociationRole& role) const;
    /// The class whose attribute the role is; null if the association owns the end.
    [[nodiscard]] const KelClass* ownerOf(const KelAssociationRole& role) const;
    /// The roles that are attributes of the class, apart from `KelClass::attributes`.
    [[nodiscard]] std::vector<const KelAssociationRole*> endsOwnedBy(const KelClass& one) const;

    /// The generalizations to write within the class, each supertype once. Adds the others to `omissions`.
    [[nodiscard]] std::vector<WrittenGeneralization> generalizationsOf(const KelClass& subtype,
                                                                       Omissions& omissions) const;
    /// Whether it is written within its client, as an InterfaceRealization.
    [[nodiscard]] bool isOfInterface(const KelRealization& realization) const;
    [[nodiscard]] Binding bindingOf(const KelClass& instantiated) const;

private:
    struct Elements;

    void resolveTypes(const std::vector<const KelType*>& types, bool usesLibrary, Omissions& omissions);
    void findAssociationClasses(const Elements& elements, Omissions& omissions);
    [[nodiscard]] Metaclass plainMetaclassOf(const KelClass& one) const;
    [[nodiscard]] const KelClass* templateNamed(std::string_view name) const;
    [[nodiscard]] TypeTarget actualNamed(std::string_view name) const;

    ElementIds ids_;
    ClassNames names_;
    ClassKinds kinds_;
    bool associationsOwnEnds_;
    tsl::robin_map<const KelClass*, Metaclass, KelPointerHash> metaclasses_;
    tsl::robin_map<const KelType*, TypeTarget, KelPointerHash> targets_;
    tsl::robin_map<std::string, TypeTarget, KelTextHash> targetsByName_; // of types whose names mean no class
    std::vector<const KelType*> writtenTypes_;
    tsl::robin_map<const KelType*, const KelConcreteType*, KelPointerHash> derivedTypes_; // by the written one
    tsl::robin_map<std::string_view, const KelClass*, KelTextHash> templates_; // by name; null: several have it
    tsl::robin_map<const KelClass*, AssociationClass, KelPointerHash> associationClasses_;
    /// Where the roles of each association of the document are; null: they are left out.
    tsl::robin_map<const KelAssociation*, const KelObject*, KelPointerHash> endOwners_;
};

} // namespace exporter
