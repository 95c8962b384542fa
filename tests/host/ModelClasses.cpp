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

constexpr std::unique_ptr<KelObject> (*makers[])() = {
    make<KelNote>,           make<KelMetadataOrigin>,  make<KelClassifierMap>,
    make<KelTransformation>, make<KelModel>,           make<KelDesignPackage>,
    make<KelClassDiagram>,   make<KelClass>,           make<KelJoin>,
    make<KelAssociation>,    make<KelGeneralization>,  make<KelDependency>,
    make<KelRealization>,    make<KelAttribute>,       make<KelOperation>,
    make<KelArgument>,       make<KelAssociationRole>, make<KelAssociationRoleNameMap>,
    make<KelJoinRole>,       make<KelCandidateKey>,    make<KelForeignKey>,
    make<KelBaseType>,       make<KelDerivedType>,     make<KelAliasType>,
    make<KelTypeValue>};

} // namespace

std::vector<std::unique_ptr<KelObject>> makeEach(KelElementType code) {
    std::vector<std::unique_ptr<KelObject>> made;
    for (const auto maker : makers) {
        if (auto object = maker(); object->isInstanceOf(code)) {
            made.push_back(std::move(object));
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
