#include "completion/ValidateModel.h"

#include "builder/BuilderState.h"
#include "builder/Classes.h"
#include "builder/Trace.h"
#include "builder/Types.h"
#include "builder/Unattached.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelModel.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"

#include <memory>

namespace rose {

void checkToBeClasses() {
    if (state.toBeClasses.getCount() == 0) {
        return;
    }
    KelDesignPackage* home = attach(std::make_unique<KelDesignPackage>(),
                                    [](KelDesignPackage* made) { return state.aModel->addChildPackage(made); });
    home->setName("Use Case Classes in Class Diagrams");
    for (KelClass* waiting : state.toBeClasses.byName()) {
        state.aClass = waiting;
        home->addModelElement(waiting);
        trace::repaired(*waiting, KelImportReason::onlyNamed, home);
        state.toBeClasses.remove(*waiting);
    }
}

namespace {

/// Gives `aBaseType` to those that have no type.
template <class Typed>
void typeAll(const KelLinks<Typed>& objects) {
    for (Typed* object : objects) {
        if (object->getType() == nullptr) {
            object->addType(state.aBaseType);
            trace::repaired(*object, KelImportReason::typeDefaulted, state.aBaseType);
        }
    }
}

/// Gives `aBaseType` to the untyped attributes and arguments of the class, and to every operation that returns nothing.
void ValidateTypes(KelClass* validated) {
    typeAll(validated->attributes());
    typeAll(validated->arguments());
    for (KelOperation* operation : validated->operations()) {
        typeAll(operation->arguments());
        if (operation->getReturnType() == nullptr) {
            operation->addReturnType(state.aBaseType);
            trace::repaired(*operation, KelImportReason::typeDefaulted, state.aBaseType);
        }
    }
}

/// Why the generalization is invalid; `none` when it is valid.
KelImportReason faultOf(const KelGeneralization& generalization) {
    const KelClass* supertype = generalization.supertypeClasses().first();
    KelImportReason fault = KelImportReason::none;
    if (supertype == nullptr || generalization.subtypeClasses().isEmpty()) {
        fault = supertype == nullptr ? KelImportReason::noSupplier : KelImportReason::noClass;
    }
    // A lookup may take a class out of the waiting list, so each is made whatever the others gave.
    if (supertype != nullptr && findAClass(supertype->getName().text(), 1) == nullptr) {
        fault = KelImportReason::supplierUnknown;
    }
    for (const KelClass* subtype : generalization.subtypeClasses()) {
        if (findAClass(subtype->getName().text(), 0) == nullptr) {
            fault = KelImportReason::noClass;
        }
    }
    return fault;
}

/// Deletes the generalization unless it has both ends and their classes are known; returns whether it did.
bool ValidateGeneralization(KelGeneralization* generalization) {
    const KelImportReason fault = faultOf(*generalization);
    if (fault == KelImportReason::none) {
        return false;
    }
    trace::removing(*generalization, fault);
    delete generalization;
    return true;
}

/// The type for objects without one.
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
        return ValidateGeneralization(&static_cast<KelGeneralization&>(element));
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
