// What is known of objects and properties goes into the ledger.

#include "ledger/LedgerMaker.h"
#include "ledger/propertyTable.h"
#include "ledger/reasons.h"

#include <algorithm>
#include <array>

namespace ledger {

namespace {

/// What objects are found by.
bool isLookedAt(std::string_view property) {
    static constexpr auto properties = std::to_array<std::string_view>(
        {"supplier", "client", "quid", "quidu", "label", "is_unit", "is_loaded", "file_name"});
    return std::ranges::find(properties, property) != properties.end();
}

/// What is looked up by the tally that came behind the last one the time before: files repeat themselves.
template <class Tally>
bool isGuessed(const Tally* guess, std::string_view bytes) {
    return guess != nullptr && guess->bytes == bytes;
}

} // namespace

KindTally& LedgerMaker::kindOf(std::string_view bytes) {
    KindTally*& guess = lastKind_ != nullptr ? lastKind_->follower : lastKind_;
    if (!isGuessed(guess, bytes)) {
        auto found = ledger_.kinds.find(bytes);
        if (found == ledger_.kinds.end()) {
            found = ledger_.kinds.emplace(bytes, KindTally{}).first;
            KindTally& tally = found->second;
            tally.bytes = found->first;
            tally.name = currentText().toUtf8(bytes);
            tally.row = &kindRow(bytes);
            tally.isPlain = isPlain(bytes);
        }
        guess = &found->second;
    }
    lastKind_ = guess;
    return *guess;
}

PropertyTally& LedgerMaker::propertyOf(SourceObject& owner, std::string_view bytes) {
    PropertyTally*& guess = owner.lastProperty != nullptr ? owner.lastProperty->follower : owner.kind->first;
    if (!isGuessed(guess, bytes)) {
        KindTally& kind = *owner.kind;
        auto found = kind.properties.find(bytes);
        if (found == kind.properties.end()) {
            found = kind.properties.emplace(bytes, PropertyTally{}).first;
            PropertyTally& tally = found->second;
            tally.bytes = found->first;
            tally.name = currentText().toUtf8(bytes);
            tally.row = propertyRow(kind.row->subject, bytes);
            tally.isPlain = isPlain(bytes);
            tally.reach = propertyReach(bytes);
            tally.hasText = (tally.row != nullptr && tally.row->check != nullptr) || tally.reach != Reach::owner ||
                            isLookedAt(bytes);
        }
        guess = &found->second;
    }
    owner.lastProperty = guess;
    return *guess;
}

void LedgerMaker::count(Counts& counts, const Reason& reason) {
    ++counts[reason.outcome];
    ledger_.losses += reason.weight == Weight::loss ? 1 : 0;
}

void LedgerMaker::settle(SourceObject& object) {
    if (!object.isImplied) {
        const bool isKept = object.verdict.reason == &reasons::kept;
        const Reason& reason = isKept ? object.kind->row->reason : *object.verdict.reason;
        count(object.kind->objects, reason);
        if (choices_.detail != Detail::counts) {
            Entry& entry = ledger_.entries[object.entry];
            entry.reason = &reason;
            entry.detail = std::move(object.verdict.detail);
        }
    }
    settleValues(object);
}

void LedgerMaker::settleValues(SourceObject& object) {
    for (const SourceValue& value : object.values) {
        const PropertyRow* row = value.property->row;
        if (object.verdict.reason == &reasons::readFromUnit) {
            const bool isFixed = row != nullptr && row->check == nullptr;
            settleValue(object, value, {isFixed ? &row->always : &reasons::storage, {}});
            continue;
        }
        Verdict verdict = object.object == nullptr ? Verdict{&reasons::withObject, {}}
                          : row == nullptr || row->check == nullptr
                              ? Verdict{&always(object, *value.property), {}}
                              : row->check({object, value, *object.object, textOf(value.file), index_, rests_});
        const bool isMissing = verdict.reason->outcome == Outcome::dropped;
        if (isMissing && value.reached != nullptr && value.reached != object.object && hasReached(object, value)) {
            verdict = {&reasons::given, quoted(*value.reached)};
        }
        settleValue(object, value, std::move(verdict));
    }
    object.values.clear();
}

// What becomes of a property of an imported object that is not held against the model.
const Reason& LedgerMaker::always(const SourceObject& owner, const PropertyTally& property) {
    return property.row != nullptr ? property.row->always : otherProperties(owner.subject());
}

// Whether the object that the import gives the property to has it.
bool LedgerMaker::hasReached(const SourceObject& owner, const SourceValue& value) {
    const PropertyRow* row = propertyRow(subjectOf(*value.reached), value.property->name);
    const bool isGiven = value.text != "FALSE" && !value.text.empty();
    if (row == nullptr || row->check == nullptr || !isGiven) {
        return false;
    }
    const Reason* reason = row->check({owner, value, *value.reached, textOf(value.file), index_, rests_}).reason;
    constexpr std::array found{&reasons::kept, &reasons::textAdded, &reasons::textCut, &reasons::replaced,
                               &reasons::textAtQuote};
    return std::ranges::find(found, reason) != found.end();
}

void LedgerMaker::settleValue(const SourceObject& owner, const SourceValue& value, Verdict verdict) {
    const Reason& reason = *verdict.reason;
    PropertyTally& tally = *value.property;
    count(tally.counts, reason);
    if (choices_.detail == Detail::counts) {
        return;
    }
    if (choices_.detail == Detail::all || reason.weight != Weight::bulk) {
        Entry& entry = ledger_.entries.emplace_back();
        entry.kind = owner.kind;
        entry.property = &tally;
        entry.file = value.file;
        entry.place = value.place;
        entry.order = value.order;
        entry.name = nameOf(owner);
        entry.reason = &reason;
        entry.detail = std::move(verdict.detail);
        return;
    }
    auto group = std::ranges::find(tally.groups, &reason, &PropertyGroup::reason);
    if (group == tally.groups.end()) {
        group = tally.groups.insert(group, {&reason, 0, value.file, value.place});
    }
    ++group->count;
}

void LedgerMaker::settleHeld(SourceObject& object, const Verdict& verdict) {
    for (SourceObject& held : object.held) {
        if (held.verdict.reason == nullptr) {
            held.verdict = verdict;
        }
        settleHeld(held, verdict);
        settle(held);
    }
    object.held.clear();
}

} // namespace ledger
