#include "ledger/LedgerMaker.h"

#include "ledger/propertyTable.h"
#include "ledger/reasons.h"
#include "notation/Reader.h"
#include "units/OpenFile.h"
#include "units/localText.h"

#include <algorithm>
#include <utility>

namespace ledger {

using notation::Construct;
using notation::Event;
using notation::EventKind;

namespace {

constexpr std::size_t nestedWindow = std::size_t{16} * 1024; // of units, which may nest deep

} // namespace

/// A file that is being read.
struct LedgerMaker::OpenText {
    OpenText(const std::filesystem::path& path, std::size_t index, const notation::Reader::Settings& settings)
        : file(static_cast<std::uint32_t>(index)), source(path), reader(source, settings) {}

    std::uint32_t file;
    units::OpenFile source;
    notation::Reader reader;
    std::size_t nextUnit = 0;
};

LedgerMaker::LedgerMaker(const units::UnitTree& tree, const KelModel& model, const Choices& choices)
    : tree_(tree), model_(model), choices_(choices), index_(model) {
    const auto common = std::make_shared<SourceText>(choices.encoding);
    for (const units::ResolvedFile& file : tree.files) {
        ledger_.files.push_back(file.path.string());
        texts_.push_back(choices.encodingByFile ? std::make_shared<SourceText>(units::encodingOf(file.contents.charSet))
                                                : common);
    }
}

LedgerMaker::~LedgerMaker() = default;

Ledger LedgerMaker::make() {
    open(0);
    while (!open_.empty()) {
        notation::Reader& reader = open_.back()->reader;
        if (reader.next()) {
            take(reader.event());
        } else {
            open_.pop_back();
        }
    }
    finishDeferred();
    std::ranges::sort(ledger_.entries, {}, &Entry::order);
    return std::move(ledger_);
}

void LedgerMaker::open(std::size_t file) {
    notation::Reader::Settings settings;
    settings.window = open_.empty() ? settings.window : nestedWindow;
    open_.push_back(std::make_unique<OpenText>(tree_.files[file].path, file, settings));
}

void LedgerMaker::take(const Event& event) {
    if (event.kind == EventKind::damage) {
        return addDamage(*event.damage);
    }
    const bool isText = event.kind == EventKind::text || event.kind == EventKind::line;
    if (event.continues) {
        noteBadValue(event);
        if (value_ != nullptr) {
            value_->text += event.startsLine ? "\n" : "";
            value_->text += event.text;
        }
        return;
    }
    value_ = nullptr;
    if (event.isProperty() && depth_ > 0) {
        addProperty(event);
    }
    noteBadValue(event);
    if (event.kind == EventKind::start && event.construct == Construct::object) {
        startObject(event);
    } else if (event.kind == EventKind::end && event.construct == Construct::object) {
        endObject();
    } else if (isText && holder_ != nullptr) { // such as (value cardinality "1")
        holder_->text = event.text;
        value_ = std::exchange(holder_, nullptr);
    }
}

SourceText& LedgerMaker::currentText() {
    return textOf(open_.back()->file);
}

const units::Unit* LedgerMaker::unitAt(const notation::Place& place) {
    OpenText& text = *open_.back();
    const std::vector<units::Unit>& units = tree_.files[text.file].units;
    while (text.nextUnit < units.size() && units[text.nextUnit].reference.range.begin < place.offset) {
        ++text.nextUnit;
    }
    const bool isUnit = text.nextUnit < units.size() && units[text.nextUnit].reference.range.begin == place.offset;
    return isUnit ? &units[text.nextUnit] : nullptr;
}

void LedgerMaker::startObject(const Event& event) {
    holder_ = nullptr;
    if (objects_.size() == depth_) {
        objects_.emplace_back();
    }
    SourceObject& object = objects_[depth_++];
    SourceObject* parent = depth_ > 1 ? &objects_[depth_ - 2] : nullptr;
    object.kind = &kindOf(event.text);
    noteBadHead(event, object.kind->isPlain);
    const bool isSought = object.subject() != Subject::none || choices_.detail != Detail::counts;
    const std::size_t names = isSought ? event.names.size() : 0;
    object.name = names == 0 ? std::string_view() : event.names.front().text;
    object.secondName = names < 2 ? std::string_view() : event.names[1].text;
    object.key = isSought ? event.key : std::string_view();
    object.reference = isSought ? event.reference : std::string_view();
    object.object = nullptr;
    object.dropped = nullptr;
    object.verdict = {};
    object.file = open_.back()->file;
    object.place = event.place;
    object.lastProperty = nullptr;
    object.values.clear();
    object.held.clear();
    object.isImplied = event.isImplied;
    object.entry = ledger_.entries.size();
    if (!event.isImplied && choices_.detail != Detail::counts) {
        Entry& entry = ledger_.entries.emplace_back();
        entry.kind = object.kind;
        entry.file = object.file;
        entry.place = object.place;
        entry.order = ++order_;
        entry.name = nameOf(object);
    }
    object.unit = unitAt(event.place);
    begin(object, parent);
}

void LedgerMaker::endObject() {
    holder_ = nullptr;
    SourceObject& object = objects_[--depth_];
    SourceObject* parent = depth_ > 0 ? &objects_[depth_ - 1] : nullptr;
    const units::Unit* unit = object.unit;
    finish(object, parent);
    if (unit != nullptr && unit->state == units::UnitState::found) {
        open(unit->file);
    }
}

void LedgerMaker::addProperty(const Event& event) {
    holder_ = nullptr;
    SourceObject& owner = objects_[depth_ - 1];
    PropertyTally& tally = propertyOf(owner, event.key);
    if (!tally.isPlain) {
        noteBadBytes(event.key, event.keyPlace, event.keyPlace.column);
    }
    const KelObject* reached = reachOf(tally);
    const bool isLost = owner.dropped != nullptr && reached == nullptr;
    const bool isKnown = isLost || (owner.object != nullptr && !tally.hasText); // what becomes of it
    const Reason& known = isLost ? reasons::withObject : always(owner, tally);
    if (isKnown && choices_.detail == Detail::counts) {
        return count(tally.counts, known);
    }
    SourceValue& value = owner.values.emplace_back();
    value.property = &tally;
    value.file = open_.back()->file;
    value.place = event.keyPlace;
    value.order = ++order_;
    value.kind = event.kind;
    value.reached = reached;
    if (isKnown) {
        settleValue(owner, value, {&known, {}});
        owner.values.pop_back();
    } else if (tally.hasText && event.kind == EventKind::start) {
        holder_ = &value;
    } else if (tally.hasText) {
        value.text = event.text;
        value_ = &value;
    }
}

void LedgerMaker::addDamage(const notation::Damage& damage) {
    ++ledger_.damageCount;
    if (choices_.detail != Detail::counts && ledger_.damages.size() < mostDamages) {
        ledger_.damages.push_back({open_.back()->file, damage});
    }
}

void LedgerMaker::noteBadBytes(std::string_view bytes, const notation::Place& place, std::uint64_t column) {
    for (const SourceText::Run& run : textOf(open_.back()->file).badRuns(bytes)) {
        ++ledger_.badByteCount;
        if (choices_.detail != Detail::counts) {
            notation::Place at = place;
            at.offset += column - place.column + run.offset;
            at.column = column + run.offset;
            ledger_.badBytes.push_back({open_.back()->file, at, std::string(bytes.substr(run.offset, run.length))});
        }
    }
}

// Of a value, which is a text behind its quote or bar, or a word; or of the word that a list or the like begins with.
void LedgerMaker::noteBadValue(const Event& event) {
    const bool isWord = event.kind == EventKind::word;
    if (isWord || event.kind == EventKind::text || event.kind == EventKind::line) {
        if (!isPlain(event.text)) {
            const bool isBehindMark = !isWord && (!event.continues || event.startsLine);
            noteBadBytes(event.text, event.place, event.place.column + (isBehindMark ? 1 : 0));
        }
    } else if (event.kind == EventKind::start && event.construct != Construct::object && !isPlain(event.text)) {
        noteBadWord(event, event.end);
    }
}

// Of the word of a construct that ends at the offset.
void LedgerMaker::noteBadWord(const Event& event, std::uint64_t end) {
    const std::uint64_t begin = end - event.text.size();
    noteBadBytes(event.text, event.place, event.place.column + begin - event.place.offset);
}

// The reader tells where an object's head ends, but not where each name begins: they are counted back from there, with
// a blank between them as the tool writes it.
void LedgerMaker::noteBadHead(const Event& event, bool isKindPlain) {
    const bool arePlain = std::ranges::all_of(event.names, isPlain, &notation::Name::text);
    if (event.isImplied || (isKindPlain && arePlain)) {
        return;
    }
    const std::size_t first = ledger_.badBytes.size();
    std::uint64_t end = event.end - (event.reference.empty() ? 0 : event.reference.size() + 2);
    for (std::size_t index = event.names.size(); index-- > 0;) {
        const notation::Name& name = event.names[index];
        const std::uint64_t begin = end - name.length - (name.hasEscapes ? 1 : 0);
        noteBadBytes(name.text, event.place, event.place.column + begin - event.place.offset);
        end = begin - 2;
    }
    noteBadWord(event, end);
    std::sort(ledger_.badBytes.begin() + static_cast<std::ptrdiff_t>(first), ledger_.badBytes.end(),
              [](const BadBytes& left, const BadBytes& right) { return left.place.offset < right.place.offset; });
}

Ledger makeLedger(const units::UnitTree& tree, const KelModel& model, const Choices& choices) {
    return LedgerMaker(tree, model, choices).make();
}

} // namespace ledger
