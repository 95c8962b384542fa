#include "ModelClasses.h"

#include "host/model/KelAliasType.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelJoin.h"
#include "host/model/KelMappingObject.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/model/KelNote.h"
#include "host/model/KelOperation.h"
#include "host/model/KelRealization.h"
#include "host/model/KelTypeValue.h"

#include <algorithm>
#include <stdexcept>

namespace {

template <class T>
std::unique_ptr<KelObject> make() {
    return std::make_unique<T>();
}

// clang-format off
const ModelClass classes[] = {
    {"KelObject", 33, 33, nullptr},
    {"KelNote", 1, 33, make<KelNote>},
    {"KelElement", 0, 33, nullptr},
    {"KelMetadataOrigin", 98, 0, make<KelMetadataOrigin>},
    {"KelMappingObject", 60, 0, nullptr},
    {"KelClassifierMap", 76, 60, make<KelClassifierMap>},
    {"KelTransformation", 79, 60, make<KelTransformation>},
    {"KelModelObject", 59, 0, nullptr},
    {"KelPackage", 144, 59, nullptr},
    {"KelModel", 2, 144, make<KelModel>},
    {"KelDesignPackage", 9, 144, make<KelDesignPackage>},
    {"KelDiagram", 10, 59, nullptr},
    {"KelClassDiagram", 11, 10, make<KelClassDiagram>},
    {"KelModelElement", 12, 59, nullptr},
    {"KelClassifier", 75, 12, nullptr},
    {"KelClass", 13, 75, make<KelClass>},
    {"KelJoin", 92, 75, make<KelJoin>},
    {"KelRelationship", 15, 12, nullptr},
    {"KelAssociation", 17, 15, make<KelAssociation>},
    {"KelGeneralization", 16, 15, make<KelGeneralization>},
    {"KelDependency", 40, 15, make<KelDependency>},
    {"KelRealization", 41, 15, make<KelRealization>},
    {"KelFeature", 77, 59, nullptr},
    {"KelStructuralFeature", 99, 77, nullptr},
    {"KelAttribute", 14, 99, make<KelAttribute>},
    {"KelOperation", 23, 59, make<KelOperation>},
    {"KelArgument", 24, 59, make<KelArgument>},
    {"KelAssociationRole", 18, 59, make<KelAssociationRole>},
    {"KelAssociationRoleNameMap", 19, 59, make<KelAssociationRoleNameMap>},
    {"KelJoinRole", 93, 59, make<KelJoinRole>},
    {"KelKey", 20, 59, nullptr},
    {"KelCandidateKey", 21, 20, make<KelCandidateKey>},
    {"KelForeignKey", 22, 20, make<KelForeignKey>},
    {"KelType", 3, 59, nullptr},
    {"KelConcreteType", 50, 3, nullptr},
    {"KelBaseType", 4, 50, make<KelBaseType>},
    {"KelDerivedType", 5, 50, make<KelDerivedType>},
    {"KelAliasType", 6, 3, make<KelAliasType>},
    {"KelTypeValue", 7, 59, make<KelTypeValue>},
};
// clang-format on

} // namespace

std::span<const ModelClass> modelClasses() {
    return classes;
}

std::vector<std::unique_ptr<KelObject>> makeEach(KelElementType code) {
    std::vector<std::unique_ptr<KelObject>> made;
    for (const ModelClass& row : classes) {
        if (row.make != nullptr && KelMetaClass::of(static_cast<KelElementType>(row.code)).isA(code)) {
            made.push_back(row.make());
        }
    }
    return made;
}

std::unique_ptr<KelObject> makeObject(KelElementType code) {
    return std::move(makeEach(code).front());
}

const KelRelation& relationOf(KelElementType holder, std::string_view name) {
    const auto all = KelRelations::all();
    const auto found = std::find_if(all.begin(), all.end(), [&](const KelRelation* relation) {
        return relation->holderType == holder && relation->name == name;
    });
    if (found == all.end()) {
        throw std::invalid_argument(std::string(name));
    }
    return **found;
}

std::vector<KelObject*> linkedTo(const KelObject& object, const KelRelation& relation, bool isHolder) {
    std::vector<KelObject*> others;
    for (int index = 0; index < relation.count(object, isHolder); ++index) {
        others.push_back(relation.at(object, isHolder, index));
    }
    return others;
}
