#include "ledger/LedgerMerge.h"

#include "host/model/KelModel.h"
#include "ledger/reasons.h"
#include "notation/unescaped.h"
#include "units/localText.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ledger {

using notation::Construct;
using notation::Event;
using notation::EventKind;

namespace {

constexpr std::size_t longestLookedAt = 256; // of a plain value; only its start matters

/// Whether a guess is right: the tally that followed the last one the time before. Files repeat themselves.
template <class Tally>
bool isGuessed(const Tally* guess, std::string_view bytes) {
    return guess != nullptr && guess->bytes == bytes;
}

/// Whether the start of a property's value is needed.
bool isLookedAt(const PropertyRow* row, std::string_view name) {
    static constexpr auto names =
        std::to_array<std::string_view>({"is_unit", "is_loaded", "file_name", "client", "supplier", "type", "result"});
    return std::ranges::find(names, name) != names.end() ||
           (row != nullptr && (row->taking == Taking::name || !row->byDefault.empty()));
}

bool isScalar(EventKind kind) {
    return kind != EventKind::start && kind != EventKind::end && kind != EventKind::damage;
}

} // namespace

LedgerMerge::LedgerMerge(const units::UnitTree& tree, const source::Trace& trace, const KelModel& model,
                         const Choices& choices, EntrySink* entries)
    : tree_(tree), trace_(trace), model_(model), choices_(choices), sink_(entries), text_(tree, trace),
      lines_(trace.getFates().size()), additions_(trace.getFates().size()), isTold_(trace.getFates().size()) {
    const auto common = std::make_shared<SourceText>(choices.encoding);
    for (const units::ResolvedFile& file : tree.files) {
        ledger_.files.push_back(file.path.string());
        texts_.push_back(choices.encodingByFile ? std::make_shared<SourceText>(units::encodingOf(file.contents.charSet))
                                                : common);
    }
    for (const source::Effect& effect : trace.getEffects()) {
        if (effect.why == KelImportReason::textAdded && additions_[effect.object] < severalAdditions) {
            ++additions_[effect.object];
        }
    }
    for (const source::Fate& fate : trace.getFates()) {
        if (fate.isOnlyNamed && fate.object != nullptr) {
            onlyNamed_.emplace(fate.object->getName().view());
        }
    }
}

Ledger LedgerMerge::make() {
    while (text_.next()) {
        take(text_.event());
    }
    settlePending(text_.takeRest());
    flush();
    account();
    return std::move(ledger_);
}

void LedgerMerge::take(const Event& event) {
    if (event.kind == EventKind::damage) {
        ++ledger_.damageCount;
        if (choices_.detail != Detail::counts && ledger_.damages.size() < mostDamages) {
            ledger_.damages.push_back({text_.getFile(), *event.damage});
        }
        return;
    }
    if (event.continues) {
        return takeValue(event);
    }
    const bool isObject = event.construct == Construct::object;
    if (event.isProperty()) {
        settlePending(text_.takeBefore(event.keyPlace.offset));
        if (depth_ > 0) {
            startProperty(event);
        }
    }
    if (event.kind == EventKind::start && isObject) {
        settlePending(text_.takeBefore(event.place.offset));
        startObject(event);
    } else if (event.kind == EventKind::end && isObject) {
        settlePending(text_.takeBefore(event.end));
        endObject();
    } else if (isScalar(event.kind)) {
        takeValue(event);
    }
}

// Takes a value of the property that began last. Values in lists belong to no property.
void LedgerMerge::takeValue(const Event& event) {
    if (property_.tally == nullptr) {
        return;
    }
    OpenProperty& property = property_;
    if (!event.continues && property.hasBegun) {
        property.isOver = true; // a second value, such as in a list
    }
    if (property.isOver) {
        return;
    }
    const bool isQuoted = event.kind == EventKind::text;
    if (!event.continues) {
        property.hasBegun = true;
        property.isQuoted = isQuoted;
        property.valueBegin = isQuoted || event.kind == EventKind::line ? event.place.offset : 0;
    }
    if (!property.isJudged) {
        return;
    }
    const bool isFalse = event.kind == EventKind::flag && event.text == "FALSE";
    property.hasValue = property.hasValue || (!event.text.empty() && !isFalse);
    property.hasEscape = property.hasEscape || (isQuoted && event.text.find_first_of("\\\"") != std::string_view::npos);
    const bool isLookedAt = !isPlain(event.text) || property.isOdd;
    property.isOdd = isLookedAt;
    if (isLookedAt) {
        property.odd += event.text;
    }
    if (property.tally->isLookedAt && property.start.size() < longestLookedAt) {
        property.start += event.text.substr(0, longestLookedAt);
    }
}

void LedgerMerge::settlePending(Effects effects) {
    for (const source::Effect& effect : effects) {
        if (effect.kind == source::EffectKind::gate) {
            noteGate(effect);
        }
    }
    if (property_.tally != nullptr) {
        settleProperty(effects);
        property_.tally = nullptr;
    } else if (isHeadPending_) {
        isHeadPending_ = false;
        judgeHead(*innermost(), parent(), effects);
    }
    flush();
}

void LedgerMerge::startObject(const Event& event) {
    if (OpenObject* parent = innermost(); parent != nullptr && parent->subject() == Subject::package) {
        tell(*parent);
    }
    if (objects_.size() == depth_) {
        objects_.emplace_back();
    }
    OpenObject& object = objects_[depth_++];
    object.kind = &kindOf(event.text);
    const std::size_t names = event.names.size();
    object.name = names == 0 ? std::string_view() : event.names.front().text;
    object.secondName = names < 2 ? std::string_view() : event.names[1].text;
    object.fileName.clear();
    object.client.clear();
    object.supplier.clear();
    object.reference = event.reference;
    object.key = event.key;
    object.own = nullptr;
    object.dropped = nullptr;
    object.verdict = {};
    object.file = text_.getFile();
    object.place = event.place;
    object.isImplied = event.isImplied;
    object.isUnit = false;
    object.isLoaded = true;
    object.unit = text_.getUnit();
    object.lastProperty = nullptr;
    object.holder = nullptr;
    object.refusal = KelImportReason::none;
    object.note = 0;
    object.properties.clear();
    object.isWaiting = true;
    object.entry = addEntry(object);
    isHeadPending_ = true;
}

void LedgerMerge::endObject() {
    OpenObject& object = *innermost();
    judgeEnd(object, parent());
    tell(object);
    --depth_;
    flush();
}

void LedgerMerge::startProperty(const Event& event) {
    OpenObject& owner = *innermost();
    property_.tally = &propertyOf(owner, event.key);
    property_.place = event.keyPlace;
    property_.valueBegin = 0;
    property_.isJudged = owner.own != nullptr || owner.isWaiting;
    property_.hasBegun = property_.isOver = property_.isQuoted = property_.hasValue = property_.hasEscape =
        property_.isOdd = property_.isWaiting = false;
    property_.start.clear();
    property_.odd.clear();
}

KindTally& LedgerMerge::kindOf(std::string_view bytes) {
    KindTally*& guess = lastKind_ != nullptr ? lastKind_->follower : lastKind_;
    if (!isGuessed(guess, bytes)) {
        auto found = ledger_.kinds.find(bytes);
        if (found == ledger_.kinds.end()) {
            found = ledger_.kinds.emplace(bytes, KindTally{}).first;
            KindTally& tally = found->second;
            tally.bytes = found->first;
            tally.name = textOf(text_.getFile()).toUtf8(bytes);
            tally.row = &kindRow(bytes);
        }
        guess = &found->second;
    }
    lastKind_ = guess;
    return *guess;
}

PropertyTally& LedgerMerge::propertyOf(OpenObject& owner, std::string_view bytes) {
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

std::uint64_t LedgerMerge::addEntry(const OpenObject& object) {
    const std::uint64_t number = firstWaiting_ + waiting_.size();
    if (!object.isImplied && sink_ != nullptr) {
        Entry& entry = waiting_.emplace_back();
        entry.kind = object.kind;
        entry.file = object.file;
        entry.place = object.place;
        entry.name = nameOf(object);
    }
    return number;
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
    if (sink_ != nullptr) {
        Entry& entry = waiting_[object.entry - firstWaiting_];
        entry.reason = &reason;
        entry.detail = std::move(object.verdict.detail);
    }
    for (const WaitingProperty& waiting : std::exchange(object.properties, {})) {
        const Reason& fate = object.own != nullptr ? *waiting.ifImported : reasons::withObject;
        count(waiting.tally->counts, fate);
        if (waiting.hasEntry) {
            waiting_[waiting.entry - firstWaiting_].reason = &fate;
        } else {
            group(*waiting.tally, fate, object.file, waiting.place);
        }
    }
}

void LedgerMerge::settleProperty(Effects effects) {
    OpenObject& owner = *innermost();
    PropertyTally& tally = *property_.tally;
    if (tally.isLookedAt) {
        noteValue(owner);
    }
    Verdict verdict = effects.empty() ? withoutEffect(owner, effects) : judgeProperty(owner, effects);
    const Reason& reason = *verdict.reason;
    const bool hasEntry = sink_ != nullptr && (choices_.detail == Detail::all || reason.weight != Weight::bulk);
    if (property_.isWaiting) {
        const std::uint64_t number = firstWaiting_ + waiting_.size();
        owner.properties.push_back({&tally, property_.place, &reason, number, hasEntry});
    } else {
        count(tally.counts, reason);
    }
    if (hasEntry) {
        Entry& entry = waiting_.emplace_back();
        entry.kind = owner.kind;
        entry.property = &tally;
        entry.file = owner.file;
        entry.place = property_.place;
        entry.name = nameOf(owner);
        entry.reason = property_.isWaiting ? nullptr : &reason;
        entry.detail = std::move(verdict.detail);
    } else if (!property_.isWaiting) {
        group(tally, reason, owner.file, property_.place);
    }
}

// Counts a property that has no entry.
void LedgerMerge::group(PropertyTally& tally, const Reason& reason, std::uint32_t file, const notation::Place& place) {
    if (sink_ == nullptr) {
        return;
    }
    auto found = std::ranges::find(tally.groups, &reason, &PropertyGroup::reason);
    if (found == tally.groups.end()) {
        found = tally.groups.insert(found, {&reason, 0, file, place});
    }
    ++found->count;
}

// Passes on the entries before the first with an unknown outcome.
void LedgerMerge::flush() {
    while (!waiting_.empty() && waiting_.front().reason != nullptr) {
        sink_->take(ledger_, waiting_.front());
        waiting_.pop_front();
        ++firstWaiting_;
    }
}

std::string LedgerMerge::nameOf(const OpenObject& object) {
    return textOf(object.file).toUtf8(notation::unescaped(object.secondName.empty() ? object.name : object.secondName));
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
    for (source::ObjectNumber number = 1; number < fates.size(); ++number) {
        if (fates[number].object == nullptr || fates[number].object == &model_) {
            continue;
        }
        Accounts& accounts = ledger_.accounts[fates[number].object->elementType];
        ++(isTold_[number]                                     ? accounts.byObject
           : isOfText[number]                                  ? accounts.byProperty
           : fates[number].cause != 0 || fates[number].isPutIn ? accounts.byRepair
                                                               : accounts.byNothing);
    }
}

Ledger makeLedger(const units::UnitTree& tree, const source::Trace& trace, const KelModel& model,
                  const Choices& choices, EntrySink* entries) {
    Ledger ledger =
        LedgerMerge(tree, trace, model, choices, choices.detail != Detail::counts ? entries : nullptr).make();
    forEachBadBytes(tree, choices, [&](const BadBytes&) { ++ledger.badByteCount; });
    return ledger;
}

} // namespace ledger
