// The counts and entries of the ledger: which one a part of the text belongs to, and what is recorded of it.

#include "host/model/KelModel.h"
#include "ledger/LedgerMerge.h"
#include "ledger/reasons.h"
#include "notation/unescaped.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace ledger {

namespace {

template <class Word>
Word wordAt(const char* bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// Whether two texts of at least that many bytes are the same; the last words overlap.
template <class Word>
bool isSameBy(std::string_view one, std::string_view other) {
    const std::size_t last = one.size() - sizeof(Word);
    for (std::size_t at = 0; at < last; at += sizeof(Word)) {
        if (wordAt<Word>(one.data() + at) != wordAt<Word>(other.data() + at)) {
            return false;
        }
    }
    return wordAt<Word>(one.data() + last) == wordAt<Word>(other.data() + last);
}

/// Whether two names are the same. Most that are compared are, and short, so a call of `memcmp` would take longer.
bool isSame(std::string_view one, std::string_view other) {
    if (one.size() != other.size()) {
        return false;
    }
    return one.size() >= sizeof(std::uint64_t)   ? isSameBy<std::uint64_t>(one, other)
           : one.size() >= sizeof(std::uint32_t) ? isSameBy<std::uint32_t>(one, other)
                                                 : one == other;
}

/// Whether a guess is right, such as the tally that followed the last one the time before. Files repeat themselves.
template <class Tally>
bool isGuessed(const Tally* guess, std::string_view bytes) {
    return guess != nullptr && isSame(guess->bytes, bytes);
}

/// Whether the start of a property's value is needed.
bool isLookedAt(const PropertyRow* row, std::string_view name) {
    static constexpr auto names =
        std::to_array<std::string_view>({"is_unit", "is_loaded", "file_name", "client", "supplier", "type", "result"});
    return std::ranges::find(names, name) != names.end() ||
           (row != nullptr && (row->taking == Taking::name || !row->byDefault.empty()));
}

/// The reason that all properties of that name of imported objects have, whatever their values; null if there is none.
const Reason* fixedReason(Subject subject, const PropertyRow* row) {
    return row == nullptr ? &otherProperties(subject) : row->taking == Taking::always ? &row->reason : nullptr;
}

} // namespace

Entry& EntryQueue::add() {
    if (first_ == end_) {
        first_ = end_ = 0;
    } else if (end_ == entries_.size() && first_ > end_ / 2) {
        std::rotate(entries_.begin(), entries_.begin() + static_cast<std::ptrdiff_t>(first_), entries_.end());
        end_ -= std::exchange(first_, 0);
    }
    if (end_ == entries_.size()) {
        entries_.emplace_back();
    }
    Entry& entry = entries_[end_++];
    entry.reason = nullptr;
    entry.detail.clear();
    return entry;
}

KindTally& LedgerMerge::kindOf(std::string_view bytes) {
    const std::size_t ends = bytes.empty() ? 0 : static_cast<unsigned char>(bytes.front() ^ (bytes.back() << 2));
    KindTally*& recent = recentKinds_[(ends + bytes.size()) % recentKinds_.size()];
    if (isGuessed(recent, bytes)) {
        return *recent;
    }
    auto found = ledger_.kinds.find(bytes);
    if (found == ledger_.kinds.end()) {
        found = ledger_.kinds.emplace(bytes, KindTally{}).first;
        KindTally& tally = found->second;
        tally.bytes = found->first;
        tally.name = textOf(text_.getFile()).toUtf8(bytes);
        tally.row = &kindRow(bytes);
    }
    recent = &found->second;
    return *recent;
}

PropertyTally& LedgerMerge::propertyOf(OpenObject& owner, std::string_view bytes) {
    if (isGuessed(owner.lastProperty, bytes)) {
        return *owner.lastProperty; // asked for a second time
    }
    PropertyTally*& guess = owner.lastProperty != nullptr ? owner.lastProperty->follower : owner.kind->first;
    if (!isGuessed(guess, bytes)) {
        KindTally& kind = *owner.kind;
        auto found = kind.properties.find(bytes);
        if (found == kind.properties.end()) {
            found = kind.properties.emplace(bytes, PropertyTally{}).first;
            PropertyTally& tally = found->second;
            tally.bytes = found->first;
            tally.name = textOf(text_.getFile()).toUtf8(bytes);
            tally.row = propertyRow(kind.row->subject, bytes);
            tally.fixed = fixedReason(kind.row->subject, tally.row);
            tally.isLookedAt = isLookedAt(tally.row, bytes);
        }
        guess = &found->second;
    }
    owner.lastProperty = guess;
    return *guess;
}

void LedgerMerge::count(Counts& counts, const Reason& reason) {
    ++counts[reason.outcome];
    ledger_.losses += reason.weight == Weight::loss ? 1 : 0;
}

// Makes an entry, which waits for its outcome until `flush`. Requires a sink.
Entry& LedgerMerge::addEntry(OpenObject& object, const PropertyTally* property, const notation::Place& place) {
    Entry& entry = waiting_.add();
    entry.kind = object.kind;
    entry.property = property;
    entry.file = object.file;
    entry.place = place;
    return entry;
}

// Gives an entry its outcome. Only those that the sink wants need the rest.
void LedgerMerge::settleEntry(Entry& entry, OpenObject& object, const Reason& reason, std::string* detail) {
    entry.reason = &reason;
    if (!sink_->wants(reason)) {
        return;
    }
    if (!std::exchange(object.isNameShown, true)) {
        object.shownName = nameOf(object);
    }
    entry.name = object.shownName;
    if (detail != nullptr) {
        entry.detail = std::move(*detail);
    }
}

// Records the outcome of an object, which must be known.
void LedgerMerge::tell(OpenObject& object) {
    if (!std::exchange(object.isWaiting, false) || object.isImplied) {
        return;
    }
    if (object.subject() == Subject::package) {
        judgeUnit(object);
    }
    const bool isKept = object.verdict.reason == &reasons::kept;
    const Reason& reason = isKept ? object.kind->row->reason : *object.verdict.reason;
    count(object.kind->objects, reason);
    if (object.hasEntry) {
        settleEntry(waiting_.at(object.entry), object, reason, &object.verdict.detail);
    } else if (sink_ != nullptr && sink_->wants(reason)) {
        settleEntry(addEntry(object, nullptr, object.place), object, reason, &object.verdict.detail);
    }
    if (object.properties.empty()) {
        return;
    }
    for (const WaitingProperty& waiting : object.properties) {
        const Reason& fate = object.own != nullptr ? *waiting.ifImported : reasons::withObject;
        count(waiting.tally->counts, fate);
        if (waiting.hasEntry) {
            settleEntry(waiting_.at(waiting.entry), object, fate, nullptr);
        } else {
            group(*waiting.tally, fate, object.file, waiting.place);
        }
    }
    object.properties.clear();
}

void LedgerMerge::settleProperty(Effects effects) {
    OpenObject& owner = *innermost();
    PropertyTally& tally = *property_.tally;
    if (tally.isLookedAt) {
        noteValue(owner);
    }
    Verdict verdict = effects.empty() ? withoutEffect(owner, effects) : judgeProperty(owner, effects);
    record(owner, tally, property_.place, *verdict.reason, &verdict.detail, property_.isWaiting);
}

// Records the outcome of a property; if it is waiting, that for the case that its object is imported. `detail` may be
// null.
void LedgerMerge::record(OpenObject& owner, PropertyTally& tally, const notation::Place& place, const Reason& reason,
                         std::string* detail, bool isWaiting) {
    const bool hasEntry = sink_ != nullptr && (choices_.detail == Detail::all || reason.weight != Weight::bulk);
    if (isWaiting) {
        owner.properties.push_back({&tally, place, &reason, waiting_.nextNumber(), hasEntry});
    } else {
        count(tally.counts, reason);
    }
    if (hasEntry && isWaiting) {
        Entry& entry = addEntry(owner, &tally, place);
        if (detail != nullptr) {
            entry.detail = std::move(*detail);
        }
    } else if (hasEntry) {
        if (sink_->wants(reason)) {
            settleEntry(addEntry(owner, &tally, place), owner, reason, detail);
        }
    } else if (!isWaiting) {
        group(tally, reason, owner.file, place);
    }
}

// Counts a property that has no entry.
void LedgerMerge::group(PropertyTally& tally, const Reason& reason, std::uint32_t file, const notation::Place& place) {
    if (!hasGroups_) {
        return;
    }
    auto group = tally.groups.begin();
    while (group != tally.groups.end() && group->reason != &reason) {
        ++group;
    }
    if (group == tally.groups.end()) {
        group = tally.groups.insert(group, {&reason, 0, file, place});
    }
    ++group->count;
}

// Passes on the entries before the first with an unknown outcome.
void LedgerMerge::flush() {
    while (const Entry* entry = waiting_.known()) {
        if (sink_->wants(*entry->reason)) {
            sink_->take(ledger_, *entry);
        }
        waiting_.removeFirst();
    }
}

std::string LedgerMerge::nameOf(const OpenObject& object) {
    const std::string& name = object.secondName.empty() ? object.name : object.secondName;
    return textOf(object.file).toUtf8(notation::unescaped(name));
}

std::string LedgerMerge::taken(std::string_view bytes, std::uint32_t file) {
    return textOf(file).toUtf8(takenOfQuoted(bytes));
}

// Counts the objects of the model by the part of the ledger that explains them.
void LedgerMerge::account() {
    const std::span<const source::Fate> fates = trace_.getFates();
    std::vector<bool> isOfText(fates.size());
    for (const source::Effect& effect : trace_.getEffects()) {
        if (effect.kind == source::EffectKind::made || effect.kind == source::EffectKind::named) {
            isOfText[trace_.heirOf(effect.object)] = true;
        }
    }
    Accounts* accounts = nullptr; // of the type of the object before
    KelElementType type{};
    for (source::ObjectNumber number = 1; number < fates.size(); ++number) {
        const source::Fate& fate = fates[number];
        if (fate.object == nullptr || fate.object == &model_) {
            continue;
        }
        if (accounts == nullptr || fate.type != type) {
            type = fate.type;
            accounts = &ledger_.accounts[type];
        }
        ++(isTold_[number]                   ? accounts->byObject
           : isOfText[number]                ? accounts->byProperty
           : fate.cause != 0 || fate.isPutIn ? accounts->byRepair
                                             : accounts->byNothing);
    }
}

} // namespace ledger
