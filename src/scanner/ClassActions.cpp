#include "scanner/Actions.h"

#include "builder/BuilderState.h"
#include "builder/Classes.h"
#include "builder/Enumerations.h"
#include "host/model/KelClass.h"
#include "scanner/actionParts.h"

namespace rose {

namespace {

void createClassOf(KelClassCategoryType category, const Reading& reading) {
    objectMechanism = false;
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
    if (aClass != nullptr && saysTrue(reading)) {
        aClass->isAbstract = true;
        trace::changed(*aClass);
    } else if (aClass == nullptr) {
        trace::refused(KelImportReason::noClass);
    }
}

/// Every persistence makes a class persistent, "Transient" too.
void setPersistent(const Reading& reading) {
    if (aClass != nullptr) {
        aClass->isPersistent = true;
        trace::changed(*aClass, nullptr, unlessSaid(reading, "\"Persistent"));
    }
}

void setSpace(const Reading& reading) {
    if (aClass != nullptr && reading.value != nullptr) {
        aClass->space = decimal(reading.value);
        trace::changed(*aClass, nullptr, decimalFault(reading.value));
    }
}

} // namespace rose
