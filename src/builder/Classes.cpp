#include "builder/Classes.h"

#include "builder/BuilderState.h"
#include "builder/ClassLookup.h"
#include "builder/Trace.h"
#include "builder/Unattached.h"
#include "builder/indexes/Containers.h"
#include "builder/indexes/PackageClasses.h"
#include "builder/report.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"

#include <memory>

namespace rose {

namespace {

/// Puts the class into the current package unless it is in one already.
bool placeClass(KelClass& placed) {
    if (!place(*aPackage, placed)) {
        return false;
    }
    PackageClasses::add(placed);
    return true;
}

} // namespace

void CreateClass(char* name, KelClassCategoryType category) {
    report(QEV_RRSE::ROS_I_CREATING_CLASS, name);
    InQualifier = false;
    aClass = nullptr;
    keepOperation = nullptr;
    attachNote = false;

    const char* simpleName = stripDoubleColon(name);
    aClass = findAClass(simpleName, 1);
    if (aClass != nullptr && aClass->getDesignPackage() != nullptr) {
        placeClass(*aClass); // a class defined twice stays where it was defined first
        trace::changed(*aClass, nullptr, KelImportReason::definedTwice);
    } else {
        // Its own from here on: found waiting, it has just left the list.
        std::unique_ptr<KelClass> made(aClass);
        if (made == nullptr) {
            made = std::make_unique<KelClass>();
            made->setName(simpleName);
        }
        made->categoryType = category;
        aClass = attach(std::move(made), [](KelClass* placed) { return placeClass(*placed); });
    }
    aAssociation = nullptr;
    activeObject = aClass;
    InNoteView = false;
}

void AddStereotypeToClass(char* text) {
    if (text == nullptr || *text == '\0') {
        return;
    }
    if (activeObject == nullptr) {
        trace::refused(KelImportReason::nothingActive);
        return;
    }
    if (activeObject->elementType == KelElementType::classObject) {
        auto& stereotyped = static_cast<KelClass&>(*activeObject);
        stereotyped.stereotype = text;
        if (stereotyped.stereotype == "Interface") {
            stereotyped.categoryType = KelClassCategoryType::interface;
        }
        trace::changed(stereotyped);
    } else if (activeObject->elementType == KelElementType::designPackage) {
        static_cast<KelDesignPackage&>(*activeObject).stereotype = text;
        trace::changed(*activeObject);
    } else {
        trace::refused(KelImportReason::nothingActive, activeObject);
    }
    InNoteView = false;
}

void AddLabel(char* text) {
    if (activeObject == nullptr || text == nullptr || *text == '\0') {
        return;
    }
    if (activeObject->elementType == KelElementType::generalization ||
        activeObject->elementType == KelElementType::dependency) {
        activeObject->setName(text);
        trace::changed(*activeObject);
    } else {
        trace::refused(KelImportReason::nothingActive, activeObject);
    }
}

} // namespace rose
