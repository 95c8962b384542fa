#include "builder/Classes.h"

#include "builder/BuilderState.h"
#include "builder/Trace.h"
#include "builder/Unattached.h"
#include "builder/indexes/ContainerIndex.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelDiagram.h"
#include "host/text/KelTextHash.h"

#include <cstring>
#include <functional>
#include <memory>
#include <string_view>
#include <tsl/robin_map.h>
#include <utility>

namespace rose {

namespace PackageClasses {

namespace {

using NamedClass = std::pair<std::string_view, KelClass*>;
constexpr bool storesHash = true; // names of one length would otherwise be compared letter by letter

tsl::robin_map<std::string_view, KelClass*, KelTextHash, std::equal_to<>, std::allocator<NamedClass>,
               storesHash>
    classes; // keyed by the class's own name text

} // namespace

void add(KelClass& added) {
    classes.try_emplace(added.getName().view(), &added);
}

KelClass* find(const KelString& name) {
    const auto found = classes.find(name.view());
    return found != classes.end() ? found->second : nullptr;
}

void forget(const KelClass& deleted) noexcept {
    const auto found = classes.find(deleted.getName().view());
    if (found != classes.end() && found->second == &deleted) {
        classes.erase(found);
    }
}

void clear() noexcept {
    decltype(classes)().swap(classes); // clear() would keep the memory
}

} // namespace PackageClasses

const char* stripDoubleColon(const char* text) {
    if (std::strstr(text, "Logical View::") == nullptr) {
        return text;
    }
    constexpr std::string_view separator = "::";
    return text + std::string_view(text).rfind(separator) + separator.size();
}

char* stripDoubleColon(char* text) {
    return text + (stripDoubleColon(static_cast<const char*>(text)) - text);
}

KelClass* findAClass(const char* name, int remove) {
    const KelString wanted(name);
    if (KelClass* found = PackageClasses::find(wanted); found != nullptr) {
        return found;
    }
    KelClass* waiting = state.toBeClasses.findFirst(wanted);
    if (waiting != nullptr && remove != 0) {
        state.toBeClasses.remove(*waiting);
    }
    return waiting;
}

KelClass* getClassFromViewelement(KelModelObject* container, const KelString& name) {
    const ContainerIndex& index = container->elementType == KelElementType::designPackage
                                      ? indexOf(static_cast<KelDesignPackage&>(*container))
                                      : indexOf(static_cast<KelDiagram&>(*container));
    return index.firstClass(name.view());
}

KelClass* createWaitingClass(const char* name) {
    auto made = std::make_unique<KelClass>();
    made->setName(name);
    state.toBeClasses.add(*made);
    KelClass* waiting = made.release();
    trace::named(*waiting);
    return waiting;
}

void CreateClass(char* name, KelClassCategoryType category) {
    report(QEV_RRSE::ROS_I_CREATING_CLASS, name);
    state.InQualifier = false;
    state.aClass = nullptr;
    state.keepOperation = nullptr;
    state.attachNote = false;

    const char* simpleName = stripDoubleColon(name);
    state.aClass = findAClass(simpleName, 1);
    if (state.aClass != nullptr && state.aClass->getDesignPackage() != nullptr) { // stays where it was defined first
        trace::changed(*state.aClass, nullptr, KelImportReason::definedTwice);
    } else {
        // Its own from here on: found waiting, it has just left the list.
        std::unique_ptr<KelClass> made(state.aClass);
        if (made == nullptr) {
            made = std::make_unique<KelClass>();
            made->setName(simpleName);
        }
        made->categoryType = category;
        state.aClass = attach(std::move(made), [](KelClass* placed) { return place(*state.aPackage, *placed); });
        PackageClasses::add(*state.aClass);
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
