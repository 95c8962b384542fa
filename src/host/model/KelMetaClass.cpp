#include "host/model/KelMetaClass.h"

#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelConcreteType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelKey.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelNote.h"
#include "host/model/KelOperation.h"
#include "host/model/KelTypeValue.h"
#include "host/model/links/KelRelations.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>
#include <iterator>
#include <numeric>

namespace {

template <class T, class Value>
constexpr KelField field(const char* name, Value T::*member) {
    return {name, static_cast<Value KelObject::*>(member)};
}

/// One row of the class table.
struct ClassRow {
    const char* name;
    KelElementType code;
    KelElementType base; // its own code for the root
    std::initializer_list<KelField> fields;
};

/// All classes, each after its base.
std::span<const ClassRow> classRows() {
    using enum KelElementType;
    static constexpr ClassRow rows[] = {
        {"KelObject", object, object, {}},
        {"KelNote", note, object, {field("description", &KelNote::description)}},
        {"KelElement", element, object, {}},
        {"KelMetadataOrigin",
         metadataOrigin,
         element,
         {field("sourceEncoding", &KelMetadataOrigin::sourceEncoding),
          field("sourceFormat", &KelMetadataOrigin::sourceFormat), field("sourcePath", &KelMetadataOrigin::sourcePath),
          field("sourceKind", &KelMetadataOrigin::sourceKind), field("vendorName", &KelMetadataOrigin::vendorName),
          field("toolName", &KelMetadataOrigin::toolName), field("toolVersions", &KelMetadataOrigin::toolVersions),
          field("toolWeb", &KelMetadataOrigin::toolWeb),
          field("methodologySummary", &KelMetadataOrigin::methodologySummary),
          field("bridgeId", &KelMetadataOrigin::bridgeId)}},
        {"KelMappingObject", mappingObject, element, {}},
        {"KelClassifierMap", classifierMap, mappingObject, {}},
        {"KelTransformation", transformation, mappingObject, {}},
        {"KelModelObject",
         modelObject,
         element,
         {field("description", &KelModelObject::description), field("physicalName", &KelModelObject::physicalName)}},
        {"KelPackage", package, modelObject, {}},
        {"KelModel", model, package, {}},
        {"KelDesignPackage", designPackage, package, {field("stereotype", &KelDesignPackage::stereotype)}},
        {"KelDiagram", diagram, modelObject, {}},
        {"KelClassDiagram", classDiagram, diagram, {}},
        {"KelModelElement", modelElement, modelObject, {}},
        {"KelClassifier", classifier, modelElement, {}},
        {"KelClass",
         classObject,
         classifier,
         {field("isAbstract", &KelClass::isAbstract), field("isPersistent", &KelClass::isPersistent),
          field("space", &KelClass::space), field("categoryType", &KelClass::categoryType),
          field("concurrency", &KelClass::concurrency), field("stereotype", &KelClass::stereotype),
          field("multiplicity", &KelClass::multiplicity)}},
        {"KelJoin", join, classifier, {}},
        {"KelRelationship", relationship, modelElement, {}},
        {"KelAssociation", association, relationship, {field("isAggregation", &KelAssociation::isAggregation)}},
        {"KelGeneralization",
         generalization,
         relationship,
         {field("visibility", &KelGeneralization::visibility), field("isVirtual", &KelGeneralization::isVirtual),
          field("isFriend", &KelGeneralization::isFriend)}},
        {"KelDependency", dependency, relationship, {}},
        {"KelRealization", realization, relationship, {}},
        {"KelFeature", feature, modelObject, {}},
        {"KelStructuralFeature", structuralFeature, feature, {}},
        {"KelAttribute",
         attribute,
         structuralFeature,
         {field("visibility", &KelAttribute::visibility), field("containment", &KelAttribute::containment),
          field("isStatic", &KelAttribute::isStatic), field("isDerived", &KelAttribute::isDerived),
          field("position", &KelAttribute::position), field("initialValue", &KelAttribute::initialValue)}},
        {"KelOperation",
         operation,
         modelObject,
         {field("visibility", &KelOperation::visibility), field("concurrency", &KelOperation::concurrency),
          field("isFriend", &KelOperation::isFriend), field("isStatic", &KelOperation::isStatic),
          field("isVirtual", &KelOperation::isVirtual), field("semantics", &KelOperation::semantics),
          field("precondition", &KelOperation::precondition), field("postcondition", &KelOperation::postcondition)}},
        {"KelArgument",
         argument,
         modelObject,
         {field("position", &KelArgument::position), field("initialValue", &KelArgument::initialValue)}},
        {"KelAssociationRole",
         associationRole,
         modelObject,
         {field("isAggregate", &KelAssociationRole::isAggregate),
          field("isNavigable", &KelAssociationRole::isNavigable), field("isStatic", &KelAssociationRole::isStatic),
          field("isFriend", &KelAssociationRole::isFriend), field("isSource", &KelAssociationRole::isSource),
          field("containment", &KelAssociationRole::containment),
          field("multiplicity", &KelAssociationRole::multiplicity)}},
        {"KelAssociationRoleNameMap", associationRoleNameMap, modelObject, {}},
        {"KelJoinRole", joinRole, modelObject, {}},
        {"KelKey", key, modelObject, {field("userDefined", &KelKey::userDefined)}},
        {"KelCandidateKey", candidateKey, key, {}},
        {"KelForeignKey", foreignKey, key, {}},
        {"KelType", type, modelObject, {}},
        {"KelConcreteType",
         concreteType,
         type,
         {field("dataType", &KelConcreteType::dataType), field("length", &KelConcreteType::length),
          field("scale", &KelConcreteType::scale), field("userDefined", &KelConcreteType::userDefined),
          field("texts", &KelConcreteType::texts)}},
        {"KelBaseType", baseType, concreteType, {}},
        {"KelDerivedType", derivedType, concreteType, {}},
        {"KelAliasType", aliasType, type, {}},
        {"KelTypeValue",
         typeValue,
         modelObject,
         {field("value", &KelTypeValue::value), field("position", &KelTypeValue::position)}},
    };
    return rows;
}

/// The kinds of ends, in the order of `KelMetaClass::ends`.
enum class EndKind : std::uint8_t { referring, owned, owning };
constexpr std::size_t kindCount = 3;

EndKind kindOf(const KelRelationEnd& end) {
    return end.relation->hold != KelHold::owns ? EndKind::referring : end.isHolder ? EndKind::owning : EndKind::owned;
}

} // namespace

/// All classes, and an index of them by code.
class KelMetaClassTable {
public:
    KelMetaClassTable() {
        classes_.reserve(classRows().size());
        for (const ClassRow& row : classRows()) {
            add(row);
        }
    }

    [[nodiscard]] const KelMetaClass& of(KelElementType code) const { return *byCode_[static_cast<std::size_t>(code)]; }
    [[nodiscard]] std::span<const KelMetaClass> all() const { return classes_; }

private:
    void add(const ClassRow& row) {
        KelMetaClass made;
        made.code_ = row.code;
        made.name_ = row.name;
        if (row.base != row.code) {
            made.base_ = byCode_[static_cast<std::size_t>(row.base)];
            made.fields_ = made.base_->fields_;
        }
        std::copy(row.fields.begin(), row.fields.end(), std::back_inserter(made.fields_));

        // Each start of a process makes the table, so each end is looked at once for a class.
        Codes& codes = codes_[static_cast<std::size_t>(row.code)];
        codes = codes_[static_cast<std::size_t>(row.base)];
        codes.set(static_cast<std::size_t>(row.code));
        std::array<std::vector<KelRelationEnd>, kindCount> ends;
        for (const KelRelation* relation : KelRelations::all()) {
            for (const bool isHolder : {true, false}) {
                const KelElementType standsHere = isHolder ? relation->holderType : relation->targetType;
                if (codes.test(static_cast<std::size_t>(standsHere))) {
                    const KelRelationEnd end{relation, isHolder};
                    ends[static_cast<std::size_t>(kindOf(end))].push_back(end);
                }
            }
        }
        std::array<std::size_t, kindCount> counts{};
        std::ranges::transform(ends, counts.begin(), &std::vector<KelRelationEnd>::size);
        made.ends_.reserve(std::accumulate(counts.begin(), counts.end(), std::size_t{0}));
        for (const std::vector<KelRelationEnd>& kind : ends) {
            made.ends_.insert(made.ends_.end(), kind.begin(), kind.end());
        }

        std::copy_if(made.ends_.begin(), made.ends_.end(), std::back_inserter(made.collectedEnds_),
                     [](const KelRelationEnd& end) { return end.relation->collects(end.isHolder); });

        classes_.push_back(std::move(made));
        KelMetaClass& kept = classes_.back();
        const std::span<const KelRelationEnd> all(kept.ends_);
        kept.referringEnds_ = all.first(counts[0]);
        kept.ownedEnds_ = all.subspan(counts[0], counts[1]);
        kept.owningEnds_ = all.last(counts[2]);
        byCode_[static_cast<std::size_t>(row.code)] = &kept;
    }

    static constexpr std::size_t codeCount = static_cast<std::size_t>(KelElementType::package) + 1;
    using Codes = std::bitset<codeCount>;

    std::array<Codes, codeCount> codes_; // of each class and its bases
    std::vector<KelMetaClass> classes_;
    std::array<const KelMetaClass*, codeCount> byCode_{};
};

namespace {

const KelMetaClassTable& table() {
    static const KelMetaClassTable made;
    return made;
}

// Made while the library is loaded: a destructor that needed it first could not report a lack of memory.
[[maybe_unused]] const KelMetaClassTable& madeAtLoad = table();

} // namespace

const KelMetaClass& KelMetaClass::of(KelElementType code) {
    return table().of(code);
}

std::span<const KelMetaClass> KelMetaClass::all() {
    return table().all();
}

bool KelMetaClass::isA(KelElementType code) const noexcept {
    const KelMetaClass* at = this;
    while (at != nullptr && at->code_ != code) {
        at = at->base_;
    }
    return at != nullptr;
}
