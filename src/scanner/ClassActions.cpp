#include "scanner/Actions.h"

#include "builder/BuilderState.h"
#include "builder/Classes.h"
#include "builder/Enumerations.h"
#include "host/model/KelClass.h"
#include "scanner/actionParts.h"

namespace rose {

namespace {

void createClassOf(KelClassCategoryType category, const Reading& reading) {
    state.objectMechanism = false;
    if (reading.value != nullptr) {
        CreateClass(reading.value, category);
    }
}

} // namespace

void createClass(const Reading& reading) {
    createClassOf(KelClassCategoryType::classObject, reading);
}

void createParameterizedClass(const Reading& reading) {
    createClassOf(KelClassCategoryType::parameterizedClass, reading);
}

void createInstantiatedClass(const Reading& reading) {
    createClassOf(KelClassCategoryType::instantiatedClass, reading);
}

void createClassUtility(const Reading& reading) {
    createClassOf(KelClassCategoryType::classUtility, reading);
}

void createParameterizedClassUtility(const Reading& reading) {
    createClassOf(KelClassCategoryType::parameterizedClassUtility, reading);
}

void createInstantiatedClassUtility(const Reading& reading) {
    createClassOf(KelClassCategoryType::instantiatedClassUtility, reading);
}

void createMetaclass(const Reading& reading) {
    createClassOf(KelClassCategoryType::metaclass, reading);
}

/// The operation itself passes over a missing value.
void addStereotype(const Reading& reading) {
    AddStereotypeToClass(reading.value);
}

void createEnumType(const Reading& reading) {
    give(CreateEnumType, reading);
}

void setAbstract(const Reading& reading) {
    if (state.aClass != nullptr && saysTrue(reading)) {
        state.aClass->isAbstract = true;
        trace::changed(*state.aClass);
    } else if (state.aClass == nullptr) {
        trace::refused(KelImportReason::noClass);
    }
}

/// Every persistence makes a class persistent, "Transient" too.
void setPersistent(const Reading& reading) {
    if (state.aClass != nullptr) {
        state.aClass->isPersistent = true;
        trace::changed(*state.aClass, nullptr, unlessSaid(reading, "\"Persistent"));
    }
}

void setSpace(const Reading& reading) {
    if (state.aClass != nullptr && reading.value != nullptr) {
        state.aClass->space = decimal(reading.value);
        trace::changed(*state.aClass, nullptr, decimalFault(reading.value));
    }
}

} // namespace rose
