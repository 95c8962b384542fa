// What is known of objects and properties goes into the ledger.

#include "ledger/LedgerMaker.h"
#include "ledger/propertyTable.h"
#include "ledger/reasons.h"

#include <algorithm>
#include <array>

namespace ledger {

KindTally& LedgerMaker::kindOf(std::string_view bytes) {
    auto found = ledger_.kinds.find(bytes);
    if (found == ledger_.kinds.end()) {
        found = ledger_.kinds.emplace(bytes, KindTally{}).first;
        found->second.name = currentText().toUtf8(bytes);
        found->second.row = &kindRow(bytes);
        found->second.isPlain = isPlain(bytes);
    }
    return found->second;
}

PropertyTally& LedgerMaker::propertyOf(KindTally& kind, std::string_view bytes) {
    auto found = kind.properties.find(bytes);
    if (found == kind.properties.end()) {
        PropertyTally tally{currentText().toUtf8(bytes),
                            propertyRow(kind.row->subject, bytes),
                            propertyReach(bytes),
                            isPlain(bytes),
                            {},
                            {}};
        found = kind.properties.emplace(bytes, std::move(tally)).first;
    }
    return found->second;
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
                          : row == nullptr         ? Verdict{&otherProperties(object.subject()), {}}
                          : row->check == nullptr
                              ? Verdict{&row->always, {}}
                              : row->check({object, value, *object.object, textOf(value.file), index_, rests_});
        const bool isMissing = verdict.reason->outcome == Outcome::dropped;
        if (isMissing && value.reached != nullptr && value.reached != object.object && hasReached(object, value)) {
            verdict = {&reasons::given, quoted(*value.reached)};
        }
        settleValue(object, value, std::move(verdict));
    }
    object.values.clear();
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
