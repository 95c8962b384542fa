#include "ledger/LedgerMerge.h"

#include "host/model/KelModel.h"
#include "ledger/reasons.h"
#include "units/localText.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace ledger {

using notation::Construct;
using notation::Event;
using notation::EventKind;
using notation::Line;

namespace {

constexpr std::size_t longestLookedAt = 256; // of a plain value; only its start matters

/// Whether a quoted text contains a backslash or a quote. A search for either of them at once takes longer.
bool hasMark(std::string_view text) {
    return text.find('\\') != std::string_view::npos || text.find('"') != std::string_view::npos;
}

bool isScalar(EventKind kind) {
    return kind != EventKind::start && kind != EventKind::end && kind != EventKind::damage;
}

} // namespace

LedgerMerge::LedgerMerge(const units::UnitTree& tree, const source::Trace& trace, const KelModel& model,
                         const Choices& choices, EntrySink* entries)
    : tree_(tree), trace_(trace), model_(model), choices_(choices), sink_(entries),
      hasGroups_(entries != nullptr && entries->wantsGroups()),
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

Ledger LedgerMerge::make(const BeginReading& begin) {
    if (begin) {
        begin(text_);
    }
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

KelString encodingOf(const units::ResolvedFile& file, const Choices& choices) {
    return choices.encodingByFile ? KelString(units::encodingOf(file.contents.charSet)) : choices.encoding;
}

Ledger makeLedger(const units::UnitTree& tree, const source::Trace& trace, const KelModel& model,
                  const Choices& choices, EntrySink* entries, const BeginReading& begin) {
    return LedgerMerge(tree, trace, model, choices, choices.detail != Detail::counts ? entries : nullptr).make(begin);
}

} // namespace ledger
