#include "source/TracedText.h"

#include "units/OpenFile.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace source {

namespace {

constexpr std::uint64_t toTheEnd = std::numeric_limits<std::uint64_t>::max();
constexpr std::size_t nestedWindow = std::size_t{16} * 1024; // of units, which may nest deep

} // namespace

struct TracedText::OpenText final : notation::ByteSource {
    OpenText(const std::filesystem::path& path, std::size_t index, const notation::Reader::Settings& settings,
             const Watch& watched)
        : file(static_cast<std::uint32_t>(index)), source(path), watch(watched), reader(*this, settings) {}

    std::size_t read(char* target, std::size_t size) override {
        const std::size_t count = source.read(target, size);
        if (watch) {
            watch(file, {target, count});
        }
        return count;
    }

    std::uint32_t file;
    units::OpenFile source;
    const Watch& watch;
    notation::Reader reader; // of this
    std::size_t nextUnit = 0;
    std::size_t openUnits = 0; // objects that refer to units
};

TracedText::TracedText(const units::UnitTree& tree, const Trace& trace, Watch watch)
    : tree_(tree), watch_(std::move(watch)), effects_(trace.getEffects()), isClosed_(tree.files.size()) {
    open(0);
}

TracedText::~TracedText() = default;

void TracedText::open(std::size_t file) {
    notation::Reader::Settings settings;
    settings.window = open_.empty() ? settings.window : nestedWindow;
    open_.push_back(std::make_unique<OpenText>(tree_.files[file].path, file, settings, watch_));
}

bool TracedText::next() {
    unit_ = nullptr;
    if (const units::Unit* unit = std::exchange(toOpen_, nullptr)) {
        open(unit->file);
    }
    while (!open_.empty() && !open_.back()->reader.next()) {
        isClosed_[open_.back()->file] = true;
        open_.pop_back();
    }
    if (open_.empty()) {
        return false;
    }
    file_ = open_.back()->file;
    const notation::Event& now = event();
    if (now.construct == notation::Construct::object) {
        if (now.kind == notation::EventKind::start) {
            unit_ = unitAt(now.place);
            open_.back()->openUnits += unit_ != nullptr ? 1 : 0;
            objects_.push_back(unit_);
        } else if (now.kind == notation::EventKind::end) {
            const units::Unit* ended = objects_.back();
            objects_.pop_back();
            open_.back()->openUnits -= ended != nullptr ? 1 : 0;
            toOpen_ = ended != nullptr && ended->state == units::UnitState::found ? ended : nullptr;
        }
    }
    for (notation::Listener* listener : listeners_) {
        listener->take(now);
    }
    return true;
}

const notation::Event& TracedText::event() const {
    return open_.back()->reader.event();
}

// The reader, if no object that refers to a unit is open; `before` becomes the offset of the next one.
notation::Reader* TracedText::readerOfLines(std::uint64_t& before) {
    if (open_.empty() || toOpen_ != nullptr || open_.back()->openUnits > 0) {
        return nullptr;
    }
    OpenText& text = *open_.back();
    const std::vector<units::Unit>& units = tree_.files[text.file].units;
    before = text.nextUnit < units.size() ? units[text.nextUnit].reference.range.begin : toTheEnd;
    return &text.reader;
}

const notation::Line* TracedText::nextLine() {
    std::uint64_t before = 0;
    notation::Reader* const reader = readerOfLines(before);
    const notation::Line* line = reader != nullptr ? reader->nextLine(before) : nullptr;
    if (line == nullptr) {
        return nullptr;
    }
    file_ = open_.back()->file;
    unit_ = nullptr;
    if (line->isObject()) {
        objects_.push_back(nullptr);
    }
    for (std::uint64_t ends = line->objectEnds; ends != 0; ends &= ends - 1) {
        objects_.pop_back();
    }
    for (notation::Listener* listener : listeners_) {
        listener->take(*line);
    }
    return line;
}

notation::Skimmed TracedText::skim(const notation::Reader::TakeObject& takeObject,
                                   const notation::Reader::TakeProperty& takeProperty) {
    if (!listeners_.empty()) {
        return {};
    }
    std::uint64_t before = 0;
    notation::Reader* const reader = readerOfLines(before);
    const Effect* const step = steps_.next();
    const bool isQuiet = step == nullptr || step->file == file_;
    if (reader == nullptr || file_ != open_.back()->file || !isQuiet) {
        return {};
    }
    const notation::Skimmed skimmed =
        reader->skim(step != nullptr ? std::min(before, step->begin) : before, takeObject, takeProperty);
    objects_.resize(objects_.size() + skimmed.depth - (skimmed.isAtEnd ? 1 : 0));
    return skimmed;
}

const units::Unit* TracedText::unitAt(const notation::Place& place) {
    OpenText& text = *open_.back();
    const std::vector<units::Unit>& units = tree_.files[text.file].units;
    while (text.nextUnit < units.size() && units[text.nextUnit].reference.range.begin < place.offset) {
        ++text.nextUnit;
    }
    const bool isUnit = text.nextUnit < units.size() && units[text.nextUnit].reference.range.begin == place.offset;
    return isUnit ? &units[text.nextUnit++] : nullptr;
}

std::span<const Effect> StepCursor::takeSome(std::uint64_t offset) {
    const std::size_t first = taken_;
    const auto isReached = [&](const Effect& effect) {
        return text_.isClosed_[effect.file] || (effect.file == text_.file_ && effect.begin < offset);
    };
    while (taken_ < effects_.size() && isReached(effects_[taken_])) {
        ++taken_;
    }
    return effects_.subspan(first, taken_ - first);
}

std::span<const Effect> StepCursor::takeRest() {
    return effects_.subspan(std::exchange(taken_, effects_.size()));
}

} // namespace source
