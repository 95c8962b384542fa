#include "source/makeSourceMap.h"

#include "host/model/KelModel.h"
#include "source/TracedText.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

namespace source {

namespace {

using notation::Construct;
using notation::Event;
using notation::EventKind;

/// The strength of an object's claim to a place.
enum class Claim : std::uint8_t {
    none,
    caused, ///< an object or property of the file caused it
    own,    ///< the object of the file became it
};

/// An object of the files that is being read.
struct OpenObject {
    SourcePlace place;
    std::vector<std::pair<ObjectNumber, Claim>> made = {}; // the objects that have this place
    bool isDesign = false;
};

} // namespace

class SourceMapMaker::MapMaker {
public:
    MapMaker(const units::UnitTree& tree, const Trace& trace, const KelModel& model, const TracedText& text)
        : trace_(trace), modelNumber_(numberOf(model, trace)), text_(text), steps_(text.getSteps()),
          places_(trace.getFates().size()), claims_(trace.getFates().size()), map_(pathsOf(tree)) {}

    SourceMap finish() {
        settle(steps_.takeRest());
        inherit();
        for (ObjectNumber number = 1; number < places_.size(); ++number) {
            if (const KelObject* object = trace_.getFate(number).object; object != nullptr && isPlaced(number)) {
                map_.add(*object, places_[number]);
            }
        }
        return std::move(map_);
    }

    void take(const Event& event) {
        const bool isObject = event.construct == Construct::object;
        if (event.kind == EventKind::damage || event.continues) {
            return;
        }
        if (event.isProperty()) {
            settle(steps_.takeBefore(event.keyPlace.offset));
            if (event.kind == EventKind::text) {
                noteText(event.key, event.text);
            }
        }
        if (event.kind == EventKind::start && isObject) {
            open(event.text, event.place);
        } else if (event.kind == EventKind::end && isObject) {
            settle(steps_.takeBefore(event.end));
            close(event.end);
        }
    }

    // As the events of the line, one after the other.
    void take(const notation::Line& line) {
        if (!line.key.empty()) {
            settle(steps_.takeBefore(line.place.offset));
            if (line.kind == EventKind::text && line.construct != Construct::value) {
                noteText(line.key, line.text);
            }
        }
        if (line.isObject()) {
            open(line.text, line.valuePlace());
        }
        for (std::uint64_t ends = line.objectEnds; ends != 0; ends &= ends - 1) {
            const std::uint64_t end = line.endsBegin + static_cast<std::uint64_t>(std::countr_zero(ends)) + 1;
            settle(steps_.takeBefore(end));
            close(end);
        }
    }

private:
    static ObjectNumber numberOf(const KelModel& model, const Trace& trace) {
        const auto found = std::ranges::find(trace.getFates(), &model, &Fate::object);
        return static_cast<ObjectNumber>(found - trace.getFates().begin());
    }

    void noteText(std::string_view key, std::string_view text) {
        if (key == "quid" && !open_.empty() && open_.back().place.quid.empty()) {
            open_.back().place.quid = text;
        }
    }

    void open(std::string_view kind, const notation::Place& place) {
        settle(steps_.takeBefore(place.offset));
        open_.push_back({{text_.getFile(), place, 0, {}}});
        open_.back().isDesign = kind == "Design" && open_.size() == 1;
        isInHead_ = true;
    }

    // Assigns the steps to the object that is being read.
    void settle(std::span<const Effect> effects) {
        if (open_.empty()) {
            return;
        }
        for (const Effect& effect : effects) {
            const bool isMade = effect.kind == EffectKind::made;
            if (isMade || effect.kind == EffectKind::named) {
                claim(effect.object, isMade && std::exchange(isInHead_, false) ? Claim::own : Claim::caused);
            } else if (effect.kind == EffectKind::changed && effect.other != 0) {
                claim(effect.other, Claim::caused);
            }
        }
        isInHead_ = false;
    }

    void claim(ObjectNumber number, Claim claim) {
        if (claims_[number] < claim) {
            claims_[number] = claim;
            open_.back().made.emplace_back(number, claim);
        }
    }

    void close(std::uint64_t end) {
        OpenObject& object = open_.back();
        object.place.end = end;
        for (const auto& [number, claim] : object.made) {
            if (claims_[number] == claim) { // no inner object has a stronger claim
                places_[number] = object.place;
                places_[number].quid = claim == Claim::own ? object.place.quid : std::string();
            }
        }
        if (open_.size() == 1 && object.place.file == 0 && (object.isDesign || !isPlaced(modelNumber_))) {
            places_[modelNumber_] = object.place; // that of the design or, without one, of the header
            claims_[modelNumber_] = object.isDesign ? Claim::own : Claim::caused;
        }
        open_.pop_back();
    }

    [[nodiscard]] bool isPlaced(ObjectNumber number) const { return claims_[number] != Claim::none; }

    void give(ObjectNumber from, ObjectNumber to) {
        if (from != 0 && to != 0 && isPlaced(from) && !isPlaced(to)) {
            places_[to] = places_[from];
            places_[to].quid.clear();
            claims_[to] = Claim::caused;
        }
    }

    // Heirs get the places of the objects that they replaced, and objects made by repairs those of their causes. Causes
    // are mostly older than their effects, so chains are short.
    void inherit() {
        for (ObjectNumber number = 1; number < places_.size(); ++number) {
            give(number, trace_.getFate(number).heir);
        }
        std::vector<ObjectNumber> chain;
        for (ObjectNumber number = 1; number < places_.size(); ++number) {
            chain.clear();
            for (ObjectNumber at = number; at != 0 && !isPlaced(at) && chain.size() < longestChain;
                 at = trace_.getFate(at).cause) {
                chain.push_back(at);
            }
            for (auto at = chain.rbegin(); at != chain.rend(); ++at) {
                give(trace_.getFate(*at).cause, *at);
            }
        }
    }

    static constexpr std::size_t longestChain = 16;

    const Trace& trace_;
    const ObjectNumber modelNumber_; // the bridge has reported the model, to which it added an origin
    const TracedText& text_;
    StepCursor steps_;
    std::vector<SourcePlace> places_; // by number
    std::vector<Claim> claims_;       // likewise
    SourceMap map_;
    std::vector<OpenObject> open_;
    bool isInHead_ = false; // only the head of the innermost object has been read, and it has made no object
};

SourceMapMaker::SourceMapMaker(const units::UnitTree& tree, const Trace& trace, const KelModel& model,
                               const TracedText& text)
    : maker_(std::make_unique<MapMaker>(tree, trace, model, text)) {}

SourceMapMaker::~SourceMapMaker() = default;

void SourceMapMaker::take(const notation::Event& event) {
    maker_->take(event);
}

void SourceMapMaker::take(const notation::Line& line) {
    maker_->take(line);
}

SourceMap SourceMapMaker::finish() {
    return maker_->finish();
}

std::vector<std::string> pathsOf(const units::UnitTree& tree) {
    std::vector<std::string> paths;
    std::ranges::transform(tree.files, std::back_inserter(paths),
                           [](const units::ResolvedFile& file) { return file.path.string(); });
    return paths;
}

SourceMap makeSourceMap(const units::UnitTree& tree, const Trace& trace, const KelModel& model) {
    TracedText text(tree, trace);
    SourceMapMaker maker(tree, trace, model, text);
    for (;;) {
        if (const notation::Line* line = text.nextLine()) {
            maker.take(*line);
        } else if (text.next()) {
            maker.take(text.event());
        } else {
            return maker.finish();
        }
    }
}

} // namespace source
