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
    shadowAttribute = nullptr;
    auto made = std::make_unique<KelAttribute>();
    made->setName(name);
    made->visibility = privateVisibility;
    KelClass* owner = InQualifier ? nullptr : aClass;
    const auto offer = [owner](KelAttribute* added) { return owner != nullptr && owner->addAttribute(added); };
    aAttribute =
        attach(std::move(made), offer, owner != nullptr ? KelImportReason::nameTaken : KelImportReason::noClass);
    if (trace::isOn() && owner != nullptr && aAttribute->getAssociatedClass() == nullptr) {
        trace::refused(KelImportReason::nameTaken, aAttribute, owner->getAttribute(aAttribute->getName(), nullptr));
    }
    if (owner != nullptr) {
        // A refused attribute gets a position, too.
        aAttribute->position = static_cast<std::int16_t>(owner->getAttributeCount() - 1);
    }
    InNoteView = false;
    activeObject = aAttribute;
}

void SetInitialValue(char* text) {
    if (activeObject == nullptr) {
        trace::refused(KelImportReason::nothingActive);
        return;
    }
    if (activeObject->elementType == KelElementType::attribute) {
        aAttribute->initialValue = text;
        trace::changed(*aAttribute);
        if (shadowAttribute != nullptr) {
            shadowAttribute->initialValue = text;
            trace::changed(*shadowAttribute, nullptr, KelImportReason::shadow);
        }
    } else if (activeObject->elementType == KelElementType::argument) {
        aArgument->initialValue = text;
        trace::changed(*aArgument);
    } else {
        trace::refused(KelImportReason::nothingActive, activeObject);
    }
}

} // namespace rose
