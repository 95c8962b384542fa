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
    if (!place(*state.aPackage, placed)) {
        return false;
    }
    PackageClasses::add(placed);
    return true;
}

} // namespace

void CreateClass(char* name, KelClassCategoryType category) {
    report(QEV_RRSE::ROS_I_CREATING_CLASS, name);
    state.InQualifier = false;
    state.aClass = nullptr;
    state.keepOperation = nullptr;
    state.attachNote = false;

    const char* simpleName = stripDoubleColon(name);
    state.aClass = findAClass(simpleName, 1);
    if (state.aClass != nullptr && state.aClass->getDesignPackage() != nullptr) {
        placeClass(*state.aClass); // a class defined twice stays where it was defined first
        trace::changed(*state.aClass, nullptr, KelImportReason::definedTwice);
    } else {
        // Its own from here on: found waiting, it has just left the list.
        std::unique_ptr<KelClass> made(state.aClass);
        if (made == nullptr) {
            made = std::make_unique<KelClass>();
            made->setName(simpleName);
        }
        made->categoryType = category;
        state.aClass = attach(std::move(made), [](KelClass* placed) { return placeClass(*placed); });
    }
    state.aAssociation = nullptr;
    state.activeObject = state.aClass;
    state.InNoteView = false;
}

void AddStereotypeToClass(char* text) {
    if (text == nullptr || *text == '\0') {
        return;
    }
    if (state.activeObject == nullptr) {
        trace::refused(KelImportReason::nothingActive);
        return;
    }
    if (state.activeObject->elementType == KelElementType::classObject) {
        auto& stereotyped = static_cast<KelClass&>(*state.activeObject);
        stereotyped.stereotype = text;
        if (stereotyped.stereotype == "Interface") {
            stereotyped.categoryType = KelClassCategoryType::interface;
        }
        trace::changed(stereotyped);
    } else if (state.activeObject->elementType == KelElementType::designPackage) {
        static_cast<KelDesignPackage&>(*state.activeObject).stereotype = text;
        trace::changed(*state.activeObject);
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
    state.InNoteView = false;
}

void AddLabel(char* text) {
    if (state.activeObject == nullptr || text == nullptr || *text == '\0') {
        return;
    }
    if (state.activeObject->elementType == KelElementType::generalization ||
        state.activeObject->elementType == KelElementType::dependency) {
        state.activeObject->setName(text);
        trace::changed(*state.activeObject);
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

} // namespace rose
