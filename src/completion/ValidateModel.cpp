#include "completion/ValidateModel.h"

#include "builder/BuilderState.h"
#include "builder/ModelTypes.h"
#include "builder/Unattached.h"
#include "completion/ValidateAssociation.h"
#include "completion/ValidateAttributes.h"
#include "completion/ValidateGeneralization.h"
#include "completion/ValidateTypes.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelClass.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelModel.h"

#include <memory>

namespace rose {

namespace {

/// The type for whatever has none.
KelType* defaultType() {
    const KelString name("int");
    if (KelType* found = findType(name); found != nullptr) {
        return found;
    }
    auto made = std::make_unique<KelDerivedType>();
    made->setName(name);
    return attach(std::move(made), [](KelDerivedType* type) { return state.aModel->addType(type); });
}

/// Whether the element was invalid and is gone now.
bool validate(KelModelElement& element) {
    switch (element.elementType) {
    case KelElementType::classObject:
        ValidateTypes(&static_cast<KelClass&>(element));
        ValidateAttributes(&static_cast<KelClass&>(element));
        return false;
    case KelElementType::generalization:
        return ValidateGeneralization(&static_cast<KelGeneralization&>(element), nullptr);
    case KelElementType::association:
        return ValidateAssociation(&static_cast<KelAssociation&>(element));
    default:
        return false;
    }
}

} // namespace

void ValidateModel() {
    state.aBaseType = defaultType();
    for (int place = 0; place < state.packages.getCount(); ++place) {
        const auto elements = static_cast<const KelDesignPackage*>(state.packages[place])->modelElements();
        for (int index = 0; index < elements.count();) {
            index += validate(*elements[index]) ? 0 : 1;
        }
    }
    if (!state.aBaseType->isReferenced()) {
        delete state.aBaseType;
        state.aBaseType = nullptr;
    }
}

} // namespace rose
