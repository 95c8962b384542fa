#include "source/TracedText.h"

#include "notation/Reader.h"
#include "units/OpenFile.h"

#include <limits>
#include <utility>

namespace source {

namespace {

constexpr std::size_t nestedWindow = std::size_t{16} * 1024; // of units, which may nest deep

} // namespace

struct TracedText::OpenText {
    OpenText(const std::filesystem::path& path, std::size_t index, const notation::Reader::Settings& settings)
        : file(static_cast<std::uint32_t>(index)), source(path), reader(source, settings) {}

    std::uint32_t file;
    units::OpenFile source;
    notation::Reader reader;
    std::size_t nextUnit = 0;
};

TracedText::TracedText(const units::UnitTree& tree, const Trace& trace)
    : tree_(tree), effects_(trace.getEffects()), isClosed_(tree.files.size()) {
    open(0);
}

TracedText::~TracedText() = default;

void TracedText::open(std::size_t file) {
    notation::Reader::Settings settings;
    settings.window = open_.empty() ? settings.window : nestedWindow;
    open_.push_back(std::make_unique<OpenText>(tree_.files[file].path, file, settings));
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
            objects_.push_back(unit_);
        } else if (now.kind == notation::EventKind::end) {
            const units::Unit* ended = objects_.back();
            objects_.pop_back();
            toOpen_ = ended != nullptr && ended->state == units::UnitState::found ? ended : nullptr;
        }
    }
    return true;
}

const notation::Event& TracedText::event() const {
    return open_.back()->reader.event();
}

const units::Unit* TracedText::unitAt(const notation::Place& place) {
    OpenText& text = *open_.back();
    const std::vector<units::Unit>& units = tree_.files[text.file].units;
    while (text.nextUnit < units.size() && units[text.nextUnit].reference.range.begin < place.offset) {
        ++text.nextUnit;
    }
    const bool isUnit = text.nextUnit < units.size() && units[text.nextUnit].reference.range.begin == place.offset;
    return isUnit ? &units[text.nextUnit] : nullptr;
}

std::span<const Effect> TracedText::takeSome(std::uint64_t offset) {
    const std::size_t first = taken_;
    const auto isReached = [&](const Effect& effect) {
        return isClosed_[effect.file] || (effect.file == file_ && effect.begin < offset);
    };
    while (taken_ < effects_.size() && isReached(effects_[taken_])) {
        ++taken_;
    }
    return effects_.subspan(first, taken_ - first);
}

std::span<const Effect> TracedText::takeRest() {
    return effects_.subspan(std::exchange(taken_, effects_.size()));
}

} // namespace source
