#include "export/outlineForms.h"

#include "export/outlineLinesOf.h"
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
std::string lineAs(const KelObject& object) {
    return lineOf(static_cast<const T&>(object));
}

template <class T>
void belowAs(const KelObject& object, OutlineLines& lines) {
    writeLinesBelow(static_cast<const T&>(object), lines);
}

constexpr std::array forms{
    OutlineForm{KelElementType::attribute, lineAs<KelAttribute>, nullptr},
    OutlineForm{KelElementType::argument, lineAs<KelArgument>, nullptr},
    OutlineForm{KelElementType::operation, lineAs<KelOperation>, belowAs<KelOperation>},
    OutlineForm{KelElementType::classObject, lineAs<KelClass>, nullptr},
    OutlineForm{KelElementType::association, lineAs<KelAssociation>, nullptr},
    OutlineForm{KelElementType::associationRole, lineAs<KelAssociationRole>, nullptr},
    OutlineForm{KelElementType::generalization, lineAs<KelGeneralization>, nullptr},
    OutlineForm{KelElementType::realization, lineAs<KelRealization>, nullptr},
    OutlineForm{KelElementType::dependency, lineAs<KelDependency>, nullptr},
    OutlineForm{KelElementType::candidateKey, lineAs<KelCandidateKey>, nullptr},
    OutlineForm{KelElementType::foreignKey, lineAs<KelForeignKey>, belowAs<KelForeignKey>},
    OutlineForm{KelElementType::baseType, lineAs<KelBaseType>, nullptr},
    OutlineForm{KelElementType::derivedType, lineAs<KelDerivedType>, belowAs<KelDerivedType>},
    OutlineForm{KelElementType::designPackage, lineAs<KelDesignPackage>, nullptr},
    OutlineForm{KelElementType::classDiagram, lineAs<KelClassDiagram>, belowAs<KelClassDiagram>},
    OutlineForm{KelElementType::model, lineAs<KelModel>, belowAs<KelModel>},
};

} // namespace

std::span<const OutlineForm> outlineForms() {
    return forms;
}

const OutlineForm& outlineFormOf(const KelObject& object) {
    return *std::ranges::find(forms, object.elementType, &OutlineForm::type);
}

} // namespace exporter
