#include "ledger/LedgerMerge.h"

#include "host/model/KelModel.h"
#include "ledger/reasons.h"
#include "notation/unescaped.h"
#include "units/localText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

namespace ledger {

using notation::Construct;
using notation::Event;
using notation::EventKind;
using notation::Line;

namespace {

constexpr std::size_t longestLookedAt = 256; // of a plain value; only its start matters

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

/// Whether a quoted text contains a backslash or a quote. A search for either of them at once takes longer.
bool hasMark(std::string_view text) {
    return text.find('\\') != std::string_view::npos || text.find('"') != std::string_view::npos;
}

bool isScalar(EventKind kind) {
    return kind != EventKind::start && kind != EventKind::end && kind != EventKind::damage;
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

LedgerMerge::LedgerMerge(const units::UnitTree& tree, const source::Trace& trace, const KelModel& model,
                         const Choices& choices, EntrySink* entries)
    : tree_(tree), trace_(trace), model_(model), choices_(choices), sink_(entries),
      countsObject_([this](std::string_view kind, const notation::Place& place, std::size_t depth) {
          return countObject(kind, place, depth);
      }),
      takesProperty_(
          [this](std::string_view key, const notation::Place& place) { return takeQuietProperty(key, place); }),
      text_(tree, trace, [this](std::uint32_t file, std::string_view bytes) { searches_[file].read(bytes); }),
      lines_(trace.getFates().size()), additions_(trace.getFates().size()), isTold_(trace.getFates().size()) {
    const auto common = std::make_shared<SourceText>(choices.encoding);
    const auto places =
        choices.detail == Detail::counts ? BadByteSearch::Places::offsets : BadByteSearch::Places::lines;
    for (const units::ResolvedFile& file : tree.files) {
        ledger_.files.push_back(file.path.string());
        texts_.push_back(choices.encodingByFile ? std::make_shared<SourceText>(encodingOf(file, choices)) : common);
        searches_.emplace_back(encodingOf(file, choices), static_cast<std::uint32_t>(searches_.size()), places,
                               [this](const BadBytes& bytes) { take(bytes); });
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
    for (;;) {
        skim();
        if (const Line* line = text_.nextLine()) {
            take(*line);
        } else if (text_.next()) {
            take(text_.event());
        } else {
            break;
        }
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
    const Value value{event.kind, event.text, event.place.offset, event.continues};
    if (event.continues) {
        return takeValue(value);
    }
    const bool isObject = event.construct == Construct::object;
    if (event.isProperty()) {
        settlePending(text_.takeBefore(event.keyPlace.offset));
        if (depth_ > 0) {
            startProperty(event.key, event.keyPlace);
        }
    }
    if (event.kind == EventKind::start && isObject) {
        settlePending(text_.takeBefore(event.place.offset));
        const auto name = [&](std::size_t index) {
            return index < event.names.size() ? event.names[index].text : std::string_view();
        };
        startObject({event.text, name(0), name(1), event.reference, event.key, event.place, event.isImplied});
    } else if (event.kind == EventKind::end && isObject) {
        settlePending(text_.takeBefore(event.end));
        endObject();
    } else if (isScalar(event.kind)) {
        takeValue(value);
    }
}

void LedgerMerge::take(const BadBytes& bytes) {
    ++ledger_.badByteCount;
    if (choices_.detail != Detail::counts && ledger_.badBytes.size() < mostBadBytes) {
        ledger_.badBytes.push_back(bytes);
    }
}

// Takes properties of the innermost object that no step concerns, or all of its contents if it was dropped.
void LedgerMerge::skim() {
    const OpenObject* owner = innermost();
    if (owner == nullptr || isHeadPending_ || property_.tally != nullptr) {
        return;
    }
    const bool isOnlyCounted =
        sink_ == nullptr && owner->dropped != nullptr && !owner->isWaiting && owner->dropped->weight != Weight::loss;
    if (isOnlyCounted) {
        skimDropped();
    } else if (text_.skim({}, takesProperty_).isAtEnd) {
        endObject();
    }
}

// Counts the contents of the innermost object: they are dropped, too.
void LedgerMerge::skimDropped() {
    const notation::Skimmed skimmed = text_.skim(countsObject_, {});
    ledger_.unnamed[Outcome::dropped] += skimmed.properties;
    skimmed_.resize(skimmed.depth);
    for (const SkimmedObject& skipped : skimmed_) { // they go on
        --skipped.kind->objects[Outcome::dropped];
        startObject({.kind = skipped.kind->bytes, .place = skipped.place});
        judgeQuietHead();
    }
    if (skimmed.isAtEnd) {
        endObject();
    }
}

bool LedgerMerge::countObject(std::string_view bytes, const notation::Place& place, std::size_t depth) {
    KindTally& kind = kindOf(bytes);
    const bool isCounted = kind.row->subject == Subject::none || kind.row->subject == Subject::label;
    if (isCounted) {
        ++kind.objects[Outcome::dropped];
        skimmed_.resize(depth);
        skimmed_.push_back({&kind, place});
    }
    return isCounted;
}

// Judges the head of the innermost object, which no step concerns.
void LedgerMerge::judgeQuietHead() {
    isHeadPending_ = false;
    judgeHead(*innermost(), parent(), {});
}

// As the events of the line, one after the other.
void LedgerMerge::take(const Line& line) {
    if (!line.key.empty() || line.isObject()) {
        settlePending(text_.takeBefore(line.place.offset));
    }
    const bool isQuiet = !text_.hasStepBefore(line.next);
    if (line.isObject()) {
        if (!line.key.empty()) {
            startProperty(line.key, line.place);
        }
        settlePending(text_.takeBefore(line.valueBegin));
        startObject({line.text, line.names[0], line.names[1], line.reference, line.key, line.valuePlace()});
        if (isQuiet) {
            judgeQuietHead();
        }
    } else if (!line.key.empty()) {
        if (!isQuiet || line.isStart() || !takeQuietProperty(line.key, line.place)) {
            startProperty(line.key, line.place);
        }
    }
    if (isScalar(line.kind) && property_.tally != nullptr) {
        takeValue({line.kind, line.text, line.valueBegin});
        if (isQuiet && !line.key.empty()) {
            settlePending({});
        }
    }
    for (std::uint64_t ends = line.objectEnds; ends != 0; ends &= ends - 1) {
        settlePending(text_.takeBefore(line.endsBegin + static_cast<std::uint64_t>(std::countr_zero(ends)) + 1));
        endObject();
    }
}

// Takes a value of the property that began last. Values in lists belong to no property.
void LedgerMerge::takeValue(const Value& value) {
    if (property_.tally == nullptr) {
        return;
    }
    OpenProperty& property = property_;
    if (!value.continues && property.hasBegun) {
        property.isOver = true; // a second value, such as in a list
    }
    if (property.isOver) {
        return;
    }
    const bool isQuoted = value.kind == EventKind::text;
    if (!value.continues) {
        property.hasBegun = true;
        property.isQuoted = isQuoted;
        property.valueBegin = isQuoted || value.kind == EventKind::line ? value.begin : 0;
    }
    if (!property.isJudged) {
        return;
    }
    const bool isFalse = (value.kind == EventKind::flag || value.kind == EventKind::word) && value.text == "FALSE";
    property.hasValue = property.hasValue || (!value.text.empty() && !isFalse);
    property.hasEscape = property.hasEscape || (isQuoted && hasMark(value.text));
    const bool isLookedAt = !isPlain(value.text) || property.isOdd;
    property.isOdd = isLookedAt;
    if (isLookedAt) {
        property.odd += value.text;
    }
    if (property.tally->isLookedAt && property.start.size() < longestLookedAt) {
        property.start += value.text.substr(0, longestLookedAt);
    }
}

// Takes a property that no step concerns; returns false, and does nothing, if its outcome depends on its value.
bool LedgerMerge::takeQuietProperty(std::string_view key, const notation::Place& place) {
    OpenObject& owner = *innermost();
    const bool isWaiting = owner.isWaiting && isLate(owner.subject());
    if (owner.verdict.reason == &reasons::readFromUnit) {
        return false;
    }
    const bool isDropped = owner.own == nullptr && !isWaiting;
    if (isDropped && !owner.isWaiting && sink_ == nullptr) {
        ++ledger_.unnamed[Outcome::dropped];
        return true;
    }
    PropertyTally& tally = propertyOf(owner, key);
    const Reason* reason = isDropped ? &reasons::withObject : tally.fixed;
    if (reason == nullptr || (tally.isLookedAt && !(isDropped && !owner.isWaiting))) {
        return false;
    }
    record(owner, tally, place, *reason, nullptr, isWaiting);
    return true;
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

void LedgerMerge::startObject(const Head& head) {
    if (OpenObject* parent = innermost(); parent != nullptr && parent->subject() == Subject::package) {
        tell(*parent);
    }
    if (objects_.size() == depth_) {
        objects_.emplace_back();
    }
    OpenObject& object = objects_[depth_++];
    object.kind = &kindOf(head.kind);
    object.name = head.name;
    object.secondName = head.secondName;
    object.fileName.clear();
    object.client.clear();
    object.supplier.clear();
    object.reference = head.reference;
    object.isRoot = head.key == "root_category";
    object.own = nullptr;
    object.dropped = nullptr;
    object.verdict.reason = nullptr;
    object.verdict.detail.clear();
    object.file = text_.getFile();
    object.place = head.place;
    object.isImplied = head.isImplied;
    object.isUnit = false;
    object.isLoaded = true;
    object.unit = text_.getUnit();
    object.hasEntry = false;
    object.isNameShown = false;
    object.lastProperty = nullptr;
    object.holder = nullptr;
    object.refusal = KelImportReason::none;
    object.note = 0;
    object.properties.clear();
    object.isWaiting = true;
    isHeadPending_ = true;
}

void LedgerMerge::endObject() {
    OpenObject& object = *innermost();
    judgeEnd(object, parent());
    tell(object);
    --depth_;
    flush();
}

void LedgerMerge::startProperty(std::string_view key, const notation::Place& place) {
    OpenObject& owner = *innermost();
    property_.tally = &propertyOf(owner, key);
    property_.place = place;
    property_.valueBegin = 0;
    property_.isJudged = owner.own != nullptr || owner.isWaiting;
    property_.hasBegun = property_.isOver = property_.isQuoted = property_.hasValue = property_.hasEscape =
        property_.isOdd = property_.isWaiting = false;
    property_.start.clear();
    property_.odd.clear();
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
    if (!std::exchange(object.isNameShown, true)) {
        object.shownName = nameOf(object);
    }
    Entry& entry = waiting_.add();
    entry.kind = object.kind;
    entry.property = property;
    entry.file = object.file;
    entry.place = place;
    entry.name = object.shownName;
    return entry;
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
        Entry& entry = object.hasEntry ? waiting_.at(object.entry) : addEntry(object, nullptr, object.place);
        entry.reason = &reason;
        entry.detail = std::move(object.verdict.detail);
    }
    if (object.properties.empty()) {
        return;
    }
    for (const WaitingProperty& waiting : object.properties) {
        const Reason& fate = object.own != nullptr ? *waiting.ifImported : reasons::withObject;
        count(waiting.tally->counts, fate);
        if (waiting.hasEntry) {
            waiting_.at(waiting.entry).reason = &fate;
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
    if (hasEntry) {
        Entry& entry = addEntry(owner, &tally, place);
        entry.reason = isWaiting ? nullptr : &reason;
        if (detail != nullptr) {
            entry.detail = std::move(*detail);
        }
    } else if (!isWaiting) {
        group(tally, reason, owner.file, place);
    }
}

// Counts a property that has no entry.
void LedgerMerge::group(PropertyTally& tally, const Reason& reason, std::uint32_t file, const notation::Place& place) {
    if (sink_ == nullptr) {
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
        sink_->take(ledger_, *entry);
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

KelString encodingOf(const units::ResolvedFile& file, const Choices& choices) {
    return choices.encodingByFile ? KelString(units::encodingOf(file.contents.charSet)) : choices.encoding;
}

Ledger makeLedger(const units::UnitTree& tree, const source::Trace& trace, const KelModel& model,
                  const Choices& choices, EntrySink* entries) {
    return LedgerMerge(tree, trace, model, choices, choices.detail != Detail::counts ? entries : nullptr).make();
}

} // namespace ledger
