#include "source/Trace.h"

#include "host/model/KelObject.h"
#include "units/PieceMap.h"

#include <algorithm>
#include <limits>
#include <tsl/robin_set.h>
#include <utility>

namespace source {

namespace {

std::uint32_t bounded(std::uint64_t number) {
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(number, std::numeric_limits<std::uint32_t>::max()));
}

/// Whether objects of the type have one link to the element that a line names, so that a second line replaces it.
bool isLinkedOnce(KelElementType of) {
    using enum KelElementType;
    return of == associationRole || of == realization || of == dependency || of == attribute || of == argument ||
           of == operation;
}

/// A hash of an object's number and a rule.
struct FieldHash {
    std::size_t operator()(std::uint64_t key) const noexcept {
        constexpr std::uint64_t golden = 0x9E3779B97F4A7C15ULL;
        const std::uint64_t product = key * golden;
        return static_cast<std::size_t>(product ^ (product >> 32));
    }
};

} // namespace

Trace::Trace(Steps steps, std::uint64_t textSize) : steps_(steps) {
    // Real files have a step in 260 to 600 bytes and an object in 850 to 1700. Room that is not used takes no memory.
    constexpr std::uint64_t bytesPerStep = 256;
    constexpr std::uint64_t bytesPerObject = 768;
    constexpr std::uint64_t largest = std::uint64_t{256} * 1024 * 1024;
    effects_.reserve(std::min(textSize, largest) / bytesPerStep);
    fates_.reserve(std::min(textSize, largest) / bytesPerObject + 1);
    fates_.emplace_back();
}

ObjectNumber Trace::numberOf(KelObject& object) {
    ObjectNumber number = numbers_.numberOf(object);
    if (number == 0) {
        number = static_cast<ObjectNumber>(fates_.size());
        Fate& fate = fates_.emplace_back();
        fate.object = &object;
        fate.type = object.elementType;
        numbers_.give(object, number);
    }
    return number;
}

void Trace::record(const KelImportSource& by, EffectKind kind, KelImportReason why, ObjectNumber object,
                   ObjectNumber other) {
    Effect& effect = effects_.emplace_back();
    effect.begin = by.begin;
    effect.object = object;
    effect.other = other;
    effect.used = bounded(by.used);
    effect.left = bounded(by.left);
    effect.rule = static_cast<std::uint16_t>(by.rule);
    effect.kind = kind;
    effect.why = why;
}

void Trace::made(const KelImportSource& by, KelObject& object) {
    if (steps_ == Steps::makings && by.rule == 0) {
        return;
    }
    const ObjectNumber number = numberOf(object);
    if (by.rule != 0) {
        record(by, EffectKind::made, KelImportReason::none, number, 0);
    }
}

void Trace::named(const KelImportSource& by, KelObject& object) {
    record(by, EffectKind::named, KelImportReason::none, numberOf(object), 0);
}

void Trace::changed(const KelImportSource& by, KelObject& object, KelObject* other, KelImportReason why) {
    // The model has the place of an object that links to it, so this could change where its quid is.
    if (steps_ == Steps::makings && (other == nullptr || other->elementType != KelElementType::model)) {
        return;
    }
    const ObjectNumber linked = numberOf(other);
    const ObjectNumber number = numberOf(object);
    if (linked != 0) {
        fates_[number].linked = linked;
    }
    record(by, EffectKind::changed, why, number, linked);
}

void Trace::refused(const KelImportSource& by, KelImportReason why, KelObject* object, KelObject* other) {
    if (steps_ == Steps::makings) {
        return;
    }
    const ObjectNumber obstacle = numberOf(other);
    const ObjectNumber number = numberOf(object);
    if (number != 0) {
        fates_[number].refusal = why;
        fates_[number].obstacle = obstacle;
    }
    record(by, EffectKind::refused, why, number, obstacle);
}

void Trace::gate(const KelImportSource& at, KelImportReason why) {
    if (steps_ == Steps::makings) {
        return;
    }
    record(at, EffectKind::gate, why, 0, 0);
}

void Trace::repaired(KelObject& object, KelImportReason why, KelObject* other) {
    if (steps_ == Steps::makings) {
        if (object.elementType == KelElementType::model) { // which has a place in any case
            numberOf(object);
        }
        return;
    }
    const ObjectNumber given = numberOf(other);
    const ObjectNumber number = numberOf(object);
    Fate& fate = fates_[number];
    fate.isDefaulted = fate.isDefaulted || why == KelImportReason::typeDefaulted;
    fate.isOnlyNamed = fate.isOnlyNamed || why == KelImportReason::onlyNamed;
    fate.isNameCleared = fate.isNameCleared || why == KelImportReason::nameCleared;
    if (why == KelImportReason::splitForKey && fate.copy == 0) {
        fate.copy = given;
    }
    if (given != 0 && fates_[given].cause == 0) {
        fates_[given].cause = number;
    }
}

void Trace::replaced(KelObject& object, KelImportReason why, KelObject& by) {
    if (steps_ == Steps::makings) {
        return;
    }
    const ObjectNumber heir = numberOf(by);
    const ObjectNumber number = numberOf(object);
    Fate& fate = fates_[number];
    if (heir == number) {
        return;
    }
    removing(object, why);
    fate.heir = heir;
    fate.end = why;
    fate.isReplaced = true;
    fate.isRenamed = !(object.getName() == by.getName());
    if (fates_[heir].cause == 0) {
        fates_[heir].cause = number;
    }
}

void Trace::removing(KelObject& object, KelImportReason why) noexcept {
    removed_ = &object;
    removal_ = why;
}

void Trace::deleting(KelObject& object) noexcept {
    const bool isRemoved = std::exchange(removed_, removed_ == &object ? nullptr : removed_) == &object;
    const ObjectNumber number = numbers_.numberOf(object);
    if (number == 0) {
        return;
    }
    Fate& fate = fates_[number];
    fate.object = nullptr;
    if (!fate.isReplaced) {
        // Objects that are deleted with their owner share the owner's reason.
        fate.end = isRemoved || removed_ == nullptr ? removal_ : KelImportReason::withOwner;
    }
}

ObjectNumber Trace::heirOf(ObjectNumber number) const {
    // An heir outlives the object that it replaces, so there are no cycles.
    while (fates_[number].object == nullptr && number != 0) {
        number = fates_[number].heir;
    }
    return number;
}

void Trace::locate(const units::PieceMap* pieces) {
    if (pieces != nullptr) {
        std::erase_if(effects_, [this, pieces](Effect& effect) {
            const units::Piece& piece = pieces->find(effect.begin);
            const units::PieceMap::FilePlace place = pieces->toFile(effect.begin);
            effect.file = static_cast<std::uint32_t>(place.file);
            const bool isPutIn = piece.fileLength == 0;
            fates_[effect.object].isPutIn |= isPutIn && effect.kind == EffectKind::made;
            return isPutIn;
        });
    }
    // Only the texts of notes are reported later than effects of text after them.
    if (!std::ranges::is_sorted(effects_, {}, &Effect::begin)) {
        std::ranges::stable_sort(effects_, {}, &Effect::begin);
    }
    if (steps_ == Steps::all) {
        markOverwritten();
    }
    if (pieces != nullptr) {
        for (Effect& effect : effects_) {
            effect.begin = pieces->toFile(effect.begin).offset;
        }
    }
}

bool Trace::replacesValue(const Effect& effect) const {
    const Fate& fate = fates_[effect.object];
    return effect.kind == EffectKind::changed && effect.why != KelImportReason::textAdded &&
           effect.used + effect.left > 0 && fate.object != nullptr && (effect.other == 0 || isLinkedOnce(fate.type));
}

void Trace::markOverwritten() {
    std::vector<std::uint64_t> seen(
        fates_.size()); // by object, a bit for each of the first rules, which are nearly all
    tsl::robin_set<std::uint64_t, FieldHash> others;
    for (auto effect = effects_.rbegin(); effect != effects_.rend(); ++effect) {
        if (!replacesValue(*effect)) {
            continue;
        }
        if (effect->rule < 64) {
            const std::uint64_t rule = std::uint64_t{1} << effect->rule;
            effect->isOverwritten = (seen[effect->object] & rule) != 0;
            seen[effect->object] |= rule;
        } else {
            constexpr int ruleBits = 16;
            const std::uint64_t key = std::uint64_t{effect->object} << ruleBits | effect->rule;
            effect->isOverwritten = !others.insert(key).second;
        }
    }
}

} // namespace source
