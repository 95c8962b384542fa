// The outcome of properties.

#include "host/model/KelArgument.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelDependency.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelKey.h"
#include "host/model/KelNote.h"
#include "host/model/KelOperation.h"
#include "host/model/KelRealization.h"
#include "host/model/KelType.h"
#include "ledger/LedgerMerge.h"
#include "ledger/reasons.h"

#include <algorithm>
#include <array>

namespace ledger {

using source::Effect;
using source::EffectKind;

namespace {

constexpr std::size_t shownLength = 60;

bool isNoteText(Subject subject) {
    return subject == Subject::noteView || subject == Subject::label;
}

/// The type of an object of the model; null if it has none.
const KelType* typeOf(const KelObject& typed) {
    switch (typed.elementType) {
    case KelElementType::attribute:
        return static_cast<const KelAttribute&>(typed).getType();
    case KelElementType::argument:
        return static_cast<const KelArgument&>(typed).getType();
    case KelElementType::operation:
        return static_cast<const KelOperation&>(typed).getReturnType();
    default:
        return nullptr;
    }
}

/// The word for an object without a name, and its owner.
struct Nameless {
    KelElementType type;
    const char* word;
    const KelObject* (*owner)(const KelObject& object);
};
constexpr auto nameless = std::to_array<Nameless>({
    {KelElementType::generalization, "the generalization of ",
     [](const KelObject& object) -> const KelObject* {
         return static_cast<const KelGeneralization&>(object).subtypeClasses().first();
     }},
    {KelElementType::realization, "the realization of ",
     [](const KelObject& object) -> const KelObject* {
         return static_cast<const KelRealization&>(object).getRealizationClass();
     }},
    {KelElementType::dependency, "the dependency of ",
     [](const KelObject& object) -> const KelObject* {
         return static_cast<const KelDependency&>(object).getClientClass();
     }},
    {KelElementType::associationRole, "the role of ",
     [](const KelObject& object) -> const KelObject* {
         return static_cast<const KelAssociationRole&>(object).getAssociatedClass();
     }},
    {KelElementType::association, "an association", [](const KelObject&) -> const KelObject* { return nullptr; }},
});

} // namespace

std::string quoted(const KelObject& object) {
    if (!object.getName().view().empty()) {
        return '"' + std::string(object.getName().view()) + '"';
    }
    const auto* row = std::ranges::find(nameless, object.elementType, &Nameless::type);
    if (row == nameless.end()) {
        return "\"\"";
    }
    const KelObject* owner = row->owner(object);
    return row->word + (owner != nullptr ? '"' + std::string(owner->getName().view()) + '"' : std::string());
}

std::string typeName(const KelObject& typed) {
    const KelType* type = typeOf(typed);
    return type != nullptr ? quoted(*type) : std::string();
}

std::string shown(std::string_view text) {
    std::string_view start = text.substr(0, shownLength);
    while (start.size() < text.size() && !start.empty() && (text[start.size()] & 0xC0) == 0x80) {
        start.remove_suffix(1); // not within a character
    }
    return '"' + std::string(start) + (start.size() < text.size() ? "...\"" : "\"");
}

// Whether a keyword within the property's text caused the step.
bool LedgerMerge::isInText(const Effect& effect) const {
    return property_.valueBegin != 0 && effect.begin > property_.valueBegin;
}

Verdict LedgerMerge::judgeProperty(OpenObject& owner, Effects effects) {
    const Effect* own = nullptr;
    const KelObject* other = nullptr;
    const KelObject* added = nullptr; // a class that is named for the first time
    bool isNoteAdded = false;
    for (const Effect& effect : effects) {
        if (effect.kind == EffectKind::gate) {
            continue;
        }
        if (effect.kind == EffectKind::named) {
            added = trace_.find(effect.object);
            continue;
        }
        const bool isStray = isInText(effect);
        const KelObject* object = trace_.find(effect.object);
        if ((!isStray && hear(owner, effect)) || object == nullptr || effect.kind == EffectKind::refused) {
            continue;
        }
        if (isStray) {
            return {&reasons::keywordInText, quoted(*object)};
        }
        if (effect.kind == EffectKind::made) {
            const bool isNote = object->elementType == KelElementType::note;
            const KelObject* holder = isNote ? static_cast<const KelNote*>(object)->getElement() : nullptr;
            if (holder == nullptr) {
                continue;
            }
            if (!isNoteText(owner.subject()) || owner.dropped != nullptr) {
                isNoteAdded = other == nullptr || isNoteAdded;
                other = other == nullptr ? holder : other;
                continue;
            }
            noteText(owner, effect.object);
        }
        if (object == owner.own) {
            own = own == nullptr ? &effect : own;
        } else if (effect.why != KelImportReason::shadow && other == nullptr) {
            other = object;
            const KelObject* linked = trace_.find(effect.other);
            isNoteAdded = linked != nullptr && linked->elementType == KelElementType::note;
        }
    }
    if (own != nullptr) {
        return judgeChange(owner, *own);
    }
    if (other != nullptr) {
        if (owner.own == nullptr && other->elementType == KelElementType::derivedType) {
            return {&reasons::literals, quoted(*other)};
        }
        const bool isDrawing =
            owner.subject() == Subject::treeView && other->elementType == KelElementType::classDiagram;
        return {isDrawing ? &reasons::drawnFor : isNoteAdded ? &reasons::noteFor : &reasons::given, quoted(*other)};
    }
    if (added != nullptr && owner.subject() == Subject::none) {
        return {&reasons::classAdded, quoted(*added)};
    }
    return withoutEffect(owner, effects);
}

Verdict LedgerMerge::judgeChange(const OpenObject& owner, const Effect& effect) {
    const PropertyRow* row = property_.tally->row;
    if (row == nullptr) {
        return {&otherProperties(owner.subject()), {}};
    }
    const KelObject& object = *trace_.find(effect.object);
    if (effect.why == KelImportReason::valueUnknown || effect.why == KelImportReason::takenAsTrue) {
        return row->inModel != nullptr ? Verdict{&reasons::differs, row->inModel(object)}
                                       : Verdict{&reasons::takenAsTrue, {}};
    }
    if (effect.why == KelImportReason::wholeOnly) {
        return {&reasons::onAssociationOnly, {}};
    }
    if (effect.isOverwritten) {
        return {&reasons::overwritten, {}};
    }
    if (effect.left > 0) {
        return {&reasons::textCut, std::to_string(effect.used) + " bytes"};
    }
    if (property_.isQuoted && property_.hasEscape) {
        return {&reasons::textAtQuote, {}};
    }
    bool isWhole = true;
    if (property_.isOdd) {
        static_cast<void>(textOf(owner.file).toUtf8(property_.odd, &isWhole));
    }
    if (!isWhole) {
        return {&reasons::replaced, {}};
    }
    if (effect.why == KelImportReason::textAdded && additions_[effect.object] > 1 && property_.hasValue) {
        return {&reasons::textAdded, shown(static_cast<const KelModelObject&>(object).description.view())};
    }
    if (effect.other != 0 && typeOf(object) != nullptr) {
        return judgeType(effect);
    }
    const KelObject* linked = trace_.find(effect.other);
    const bool hasDetail = row->reason.outcome == Outcome::changed && linked != nullptr;
    return {&row->reason, hasDetail ? std::string(linked->getName().view()) : std::string()};
}

Verdict LedgerMerge::judgeType(const Effect& effect) {
    const KelType* type = typeOf(*trace_.find(effect.object));
    const KelObject* given = trace_.find(effect.other);
    // A type without references was deleted: attributes by reference get other types.
    bool isRenamed = given == nullptr
                         ? std::string(classNamed(taken(property_.start, innermost()->file))) != type->getName().view()
                         : !(given->getName() == type->getName());
    for (source::ObjectNumber at = effect.other; !isRenamed && trace_.getFate(at).isReplaced;
         at = trace_.getFate(at).heir) {
        isRenamed = trace_.getFate(at).isRenamed;
    }
    return isRenamed ? Verdict{&reasons::typeDiffers, std::string(type->getName().view())}
                     : Verdict{&reasons::kept, {}};
}

// Judges a property without a step.
Verdict LedgerMerge::withoutEffect(const OpenObject& owner, Effects effects) {
    const PropertyRow* row = property_.tally->row;
    if (owner.verdict.reason == &reasons::readFromUnit) {
        const bool isFixed = row != nullptr && row->taking == Taking::always;
        return {isFixed ? &row->reason : &reasons::storage, {}};
    }
    property_.isWaiting = owner.isWaiting && isLate(owner.subject());
    if (owner.own == nullptr && !property_.isWaiting) {
        return {&reasons::withObject, {}};
    }
    if (row == nullptr) {
        return {&otherProperties(owner.subject()), {}};
    }
    if (row->taking == Taking::name && owner.own != nullptr) {
        const bool isName = textOf(owner.file).toUtf8(takenOfQuoted(property_.start)) == owner.own->getName().view();
        return {isName ? &reasons::kept : &row->reason, {}};
    }
    const bool isDefault = !property_.hasValue || (!row->byDefault.empty() && property_.start == row->byDefault);
    if (row->taking != Taking::taken || isDefault) {
        return {row->taking == Taking::always ? &row->reason : &reasons::kept, {}};
    }
    if (property_.isWaiting) {
        return {&reasons::kept, {}};
    }
    for (const Effect& effect : effects) {
        if (effect.kind == EffectKind::refused && !isInText(effect)) {
            return refusal(effect.why, effect.object, nullptr);
        }
    }
    if (gate_ != KelImportReason::none) {
        return refusal(gate_, 0, nullptr);
    }
    return {&reasons::notRecognised, {}};
}

} // namespace ledger
