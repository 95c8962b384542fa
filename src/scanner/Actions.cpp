#include "scanner/Actions.h"

#include "builder/Associations.h"
#include "builder/Attributes.h"
#include "builder/Binding.h"
#include "builder/Classes.h"
#include "builder/Diagrams.h"
#include "builder/Notes.h"
#include "builder/Operations.h"
#include "builder/Trace.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelOperation.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace rose {

namespace {

/// The texts of a property whose code is their index. Any other text has the code `count`; files have only `otherText`
/// besides.
template <std::size_t count>
struct Codes {
    std::array<std::string_view, count> texts;
    std::string_view otherText;

    [[nodiscard]] std::int32_t of(std::string_view text) const {
        return static_cast<std::int32_t>(std::find(texts.begin(), texts.end(), text) - texts.begin());
    }
    [[nodiscard]] bool has(std::string_view text) const { return of(text) < static_cast<std::int32_t>(count); }
    [[nodiscard]] KelImportReason faultOf(std::string_view text) const {
        return has(text) || text == otherText ? KelImportReason::none : KelImportReason::valueUnknown;
    }
};

constexpr Codes<3> visibilities{{"Public", "Protected", "Private"}, "Implementation"};
constexpr Codes<2> containments{{"By Value", "By Reference"}, "Unspecified"};

/// Whether the matched line says TRUE.
bool saysTrue(const Reading& reading) {
    return std::strstr(reading.text, "TRUE") != nullptr;
}

/// For the observer: the value counts as TRUE although the matched line does not say `word`.
KelImportReason unlessSaid(const Reading& reading, const char* word) {
    return !trace::isOn() || std::strstr(reading.text, word) != nullptr ? KelImportReason::none
                                                                        : KelImportReason::takenAsTrue;
}

/// The decimal number at the start of `text`, cut to 32 bits; 0 without digits.
std::int32_t decimal(const char* text) {
    return static_cast<std::int32_t>(std::strtol(text, nullptr, 10));
}

/// For the observer: the text is more than such a number.
KelImportReason decimalFault(const char* text) {
    return !trace::isOn() || std::to_string(decimal(text)) == text ? KelImportReason::none
                                                                   : KelImportReason::valueUnknown;
}

/// Sets a flag of the active object if it is of that class. The value of the line is ignored.
template <class Class>
bool setFlag(const Reading& reading, KelElementType type, bool Class::*flag) {
    if (!isActive(type)) {
        return false;
    }
    static_cast<Class*>(state.activeObject)->*flag = true;
    trace::changed(*state.activeObject, nullptr, unlessSaid(reading, "TRUE"));
    return true;
}

/// Tells the observer when no flag was set.
void refuseUnless(bool isSet) {
    if (!isSet) {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

/// A text of an operation that a "PDL" line fills.
struct PendingText {
    int rule; ///< of the keyword that announces the text
    bool BuilderState::*pending;
    KelString KelOperation::*text;
};

/// The first one whose flag is set is filled.
constexpr auto pendingTexts = std::to_array<PendingText>({
    {44, &BuilderState::pre, &KelOperation::precondition},
    {43, &BuilderState::post, &KelOperation::postcondition},
    {45, &BuilderState::sem, &KelOperation::semantics},
});

} // namespace

// Classes.

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

// Attributes, arguments, and the properties that several kinds of objects share.

void createAttribute(const Reading& reading) {
    (state.InQualifier ? take<CreateKeyAttribute> : take<CreateAttribute>)(reading);
}

void setFriend(const Reading& reading) {
    refuseUnless(setFlag(reading, KelElementType::generalization, &KelGeneralization::isFriend) ||
                 setFlag(reading, KelElementType::associationRole, &KelAssociationRole::isFriend) ||
                 setFlag(reading, KelElementType::operation, &KelOperation::isFriend));
}

void setStatic(const Reading& reading) {
    refuseUnless(setFlag(reading, KelElementType::operation, &KelOperation::isStatic) ||
                 setFlag(reading, KelElementType::associationRole, &KelAssociationRole::isStatic) ||
                 setFlag(reading, KelElementType::attribute, &KelAttribute::isStatic));
}

void setDerived(const Reading& reading) {
    refuseUnless(setFlag(reading, KelElementType::attribute, &KelAttribute::isDerived));
}

void setVirtual(const Reading& reading) {
    refuseUnless(setFlag(reading, KelElementType::operation, &KelOperation::isVirtual) ||
                 setFlag(reading, KelElementType::generalization, &KelGeneralization::isVirtual));
}

void setVisibility(const Reading& reading) {
    if (reading.value == nullptr) {
        return;
    }
    if (isActive(KelElementType::attribute) && state.aAttribute != nullptr) {
        state.aAttribute->visibility = visibilities.of(reading.value);
        trace::changed(*state.aAttribute, nullptr, visibilities.faultOf(reading.value));
    } else if (isActive(KelElementType::generalization) && state.aGeneral != nullptr &&
               visibilities.has(reading.value)) {
        state.aGeneral->visibility = visibilities.of(reading.value);
        trace::changed(*state.aGeneral);
    } else {
        trace::refused(isActive(KelElementType::generalization) ? KelImportReason::valueUnknown
                                                                : KelImportReason::nothingActive,
                       state.activeObject);
    }
}

void setContainment(const Reading& reading) {
    if (reading.value == nullptr) {
        return;
    }
    if (isActive(KelElementType::attribute) && state.aAttribute != nullptr) {
        state.aAttribute->containment = containments.of(reading.value);
        trace::changed(*state.aAttribute, nullptr, containments.faultOf(reading.value));
    } else if (isActive(KelElementType::associationRole) && state.aAssociationRole != nullptr) {
        state.aAssociationRole->containment = containments.of(reading.value);
        trace::changed(*state.aAssociationRole, nullptr, containments.faultOf(reading.value));
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

// Operations.

void setConcurrency(const Reading& reading) {
    if (isActive(KelElementType::operation)) {
        take<Concurrency>(reading);
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

void setOperationVisibility(const Reading& reading) {
    if (state.aOperation != nullptr && reading.value != nullptr) {
        state.aOperation->visibility = visibilities.of(reading.value);
        trace::changed(*state.aOperation, nullptr, visibilities.faultOf(reading.value));
    }
}

void setOperationText(const Reading& reading) {
    if (state.aOperation == nullptr || reading.value == nullptr) {
        return;
    }
    for (const PendingText& candidate : pendingTexts) {
        if (std::exchange(state.*candidate.pending, false)) {
            state.aOperation->*candidate.text = KelString(reading.value);
            state.theSource.rule = candidate.rule;
            trace::changed(*state.aOperation);
            return;
        }
    }
}

// Associations, roles and the ends of relationships.

void setNavigable(const Reading& reading) {
    if (state.aAssociationRole != nullptr && saysTrue(reading)) {
        state.aAssociationRole->isNavigable = true;
        trace::changed(*state.aAssociationRole);
    } else if (state.aAssociationRole == nullptr) {
        trace::refused(KelImportReason::noAssociation);
    }
}

/// In an association with both roles only the current one is the aggregate.
void markAggregation(const Reading& reading) {
    if (state.aAssociation == nullptr || state.aAssociationRole == nullptr || !saysTrue(reading)) {
        return;
    }
    state.aAssociation->isAggregation = true;
    if (state.aAssociation->associationRoles().count() >= 2) {
        AggregateRoles::mark(*state.aAssociationRole, *state.aAssociation);
    }
    trace::changed(*state.aAssociation);
    trace::changed(*state.aAssociationRole, nullptr,
                   state.aAssociationRole->isAggregate ? KelImportReason::none : KelImportReason::wholeOnly);
}

void bindSupplier(const Reading& reading) {
    take<CreateBinding>(reading);
    state.InGeneralizationView = false;
    state.InRealizationView = false;
    state.InUsesView = false;
    state.InAssociationRoleView = false;
}

// Views, documentation and labels.

void addClassView(const Reading& reading) {
    state.InAssociationView = false;
    if (reading.value != nullptr) {
        AddToDiagram(reading.value, reading.viewNumber);
    }
}

void enterNoteView(const Reading& /*reading*/) {
    state.InNoteView = true;
    state.diagramDescription = false;
}

void setClient(const Reading& reading) {
    if (reading.value != nullptr) {
        state.client = decimal(reading.value);
    }
}

/// One effect for two keywords: a text is a label when the word "label" is anywhere in its line.
void placeText(const Reading& reading) {
    if (reading.value == nullptr) {
        return;
    }
    if (!state.InNoteView && std::strstr(reading.text, "label") == nullptr) {
        if (state.activeObject != nullptr) {
            state.activeObject->description.prepend(reading.value); // the text that is read last comes first
            trace::changed(*state.activeObject, nullptr, KelImportReason::textAdded);
        } else {
            trace::refused(KelImportReason::nothingActive);
        }
    } else if (state.diagramDescription && state.aDiagram != nullptr) {
        state.aDiagram->description.prepend(reading.value);
        trace::changed(*state.aDiagram, nullptr, KelImportReason::textAdded);
        state.diagramDescription = false;
    } else if (state.InNoteView) {
        CreateNote(reading.value);
    } else {
        AddLabel(reading.value);
    }
}

} // namespace rose
