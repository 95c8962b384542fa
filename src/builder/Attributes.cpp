#include "builder/Attributes.h"

#include "builder/BuilderState.h"
#include "builder/Unattached.h"
#include "builder/report.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"

#include <memory>

namespace rose {

namespace {

constexpr int privateVisibility = 2;

} // namespace

void CreateAttribute(char* name) {
    report(QEV_RRSE::ROS_I_CREATING_ATTRIBUTE, name);
    state.shadowAttribute = nullptr;
    auto made = std::make_unique<KelAttribute>();
    made->setName(name);
    made->visibility = privateVisibility;
    KelClass* owner = state.InQualifier ? nullptr : state.aClass;
    const auto offer = [owner](KelAttribute* added) { return owner != nullptr && owner->addAttribute(added); };
    state.aAttribute =
        attach(std::move(made), offer, owner != nullptr ? KelImportReason::nameTaken : KelImportReason::noClass);
    if (trace::isOn() && owner != nullptr && state.aAttribute->getAssociatedClass() == nullptr) {
        trace::refused(KelImportReason::nameTaken, state.aAttribute,
                       owner->getAttribute(state.aAttribute->getName(), nullptr));
    }
    if (owner != nullptr) {
        // A refused attribute gets a position, too.
        state.aAttribute->position = static_cast<std::int16_t>(owner->getAttributeCount() - 1);
    }
    state.InNoteView = false;
    state.activeObject = state.aAttribute;
}

void SetInitialValue(char* text) {
    if (state.activeObject == nullptr) {
        trace::refused(KelImportReason::nothingActive);
        return;
    }
    if (state.activeObject->elementType == KelElementType::attribute) {
        state.aAttribute->initialValue = text;
        trace::changed(*state.aAttribute);
        if (state.shadowAttribute != nullptr) {
            state.shadowAttribute->initialValue = text;
            trace::changed(*state.shadowAttribute, nullptr, KelImportReason::shadow);
        }
    } else if (state.activeObject->elementType == KelElementType::argument) {
        state.aArgument->initialValue = text;
        trace::changed(*state.aArgument);
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

} // namespace rose
