#include "export/jsonForms.h"

#include "export/jsonMembersOf.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
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
#include "host/model/KelModel.h"
#include "host/model/KelOperation.h"
#include "host/model/KelRealization.h"

#include <algorithm>
#include <array>

namespace exporter {

namespace {

template <class T>
void writeAs(const KelObject& object, JsonMembers& members) {
    writeMembersOf(static_cast<const T&>(object), members);
}

constexpr std::array forms{
    JsonForm{KelElementType::attribute, nullptr, writeAs<KelAttribute>},
    JsonForm{KelElementType::argument, nullptr, writeAs<KelArgument>},
    JsonForm{KelElementType::operation, nullptr, writeAs<KelOperation>},
    JsonForm{KelElementType::classObject, "class", writeAs<KelClass>},
    JsonForm{KelElementType::association, "association", writeAs<KelAssociation>},
    JsonForm{KelElementType::associationRole, nullptr, writeAs<KelAssociationRole>},
    JsonForm{KelElementType::generalization, "generalization", writeAs<KelGeneralization>},
    JsonForm{KelElementType::realization, "realization", writeAs<KelRealization>},
    JsonForm{KelElementType::dependency, "dependency", writeAs<KelDependency>},
    JsonForm{KelElementType::candidateKey, "candidate", writeAs<KelCandidateKey>},
    JsonForm{KelElementType::foreignKey, "foreign", writeAs<KelForeignKey>},
    JsonForm{KelElementType::baseType, "base", writeAs<KelBaseType>},
    JsonForm{KelElementType::derivedType, "derived", writeAs<KelDerivedType>},
    JsonForm{KelElementType::designPackage, nullptr, writeAs<KelDesignPackage>},
    JsonForm{KelElementType::classDiagram, nullptr, writeAs<KelClassDiagram>},
    JsonForm{KelElementType::model, nullptr, writeAs<KelModel>},
};

} // namespace

std::span<const JsonForm> jsonForms() {
    return forms;
}

const JsonForm& jsonFormOf(const KelObject& object) {
    static const auto formOfType = [] {
        std::array<const JsonForm*, 1 + static_cast<std::size_t>(KelElementType::package)> byType{};
        for (const JsonForm& form : forms) {
            byType[static_cast<std::size_t>(form.type)] = &form;
        }
        return byType;
    }();
    return *formOfType[static_cast<std::size_t>(object.elementType)];
}

} // namespace exporter
