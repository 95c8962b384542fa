#include "source/makeQuidMap.h"

#include "host/model/KelModel.h"
#include "source/QuidSearch.h"
#include "source/makeSourceMap.h"

#include <algorithm>
#include <optional>

namespace source {

namespace {

/// Only quids are looked for.
constexpr notation::Place noPlace{.line = 0};

/// The making of an object, without what quids do not need.
struct Making {
    std::uint64_t begin;
    ObjectNumber object;
};

/// Gives quids to the objects that were made in the heads of the files' objects.
class QuidGiver {
public:
    QuidGiver(const units::UnitTree& tree, const Trace& trace, const KelModel& model)
        : tree_(tree), trace_(trace), model_(model), makings_(tree.files.size()), isMade_(trace.getFates().size()),
          isMadeAgain_(trace.getFates().size()) {
        for (const Effect& effect : trace.getEffects()) {
            if (effect.kind == EffectKind::made) {
                makings_[effect.file].push_back({effect.begin, effect.object});
                isMadeAgain_[effect.object] = isMade_[effect.object];
                isMade_[effect.object] = true;
            }
        }
    }

    /// The map; nothing if the search for quids does not tell all of them.
    std::optional<SourceMap> make() {
        SourceMap map(pathsOf(tree_));
        for (std::uint32_t file = 0; file < tree_.files.size(); ++file) {
            if (!give(file, map)) {
                return std::nullopt;
            }
        }
        return map;
    }

private:
    bool give(std::uint32_t file, SourceMap& map) {
        const std::vector<Making>& makings = makings_[file];
        if (!std::ranges::is_sorted(makings, {}, &Making::begin)) {
            return false;
        }
        QuidSearch search(tree_.files[file].path);
        const TopObjects tops = file == 0 ? findTopObjects(tree_.files[file].path) : TopObjects{};
        std::string quidOfFirst;
        std::string quidOfDesign;
        auto next = makings.begin();
        while (const std::optional<FoundQuid> found = search.next()) {
            takeFirst(tops.first, *found, quidOfFirst);
            takeFirst(tops.design, *found, quidOfDesign);
            const bool isLate = next != makings.begin() && std::prev(next)->begin >= found->owner;
            const auto making = isLate ? std::ranges::lower_bound(makings, found->owner, {}, &Making::begin)
                                       : std::find_if(next, makings.end(),
                                                      [&](const Making& one) { return one.begin >= found->owner; });
            next = isLate ? next : making;
            // The first object made in the head is the one that the file describes.
            if (making != makings.end() && making->begin < found->headEnd && !found->text.empty() &&
                !add(making->object, {.file = file, .begin = noPlace, .end = 0, .quid = std::string(found->text)},
                     map)) {
                return false;
            }
        }
        if (search.isLost() || file != 0) {
            return !search.isLost();
        }
        // The design is the object of the whole model; a file without one has its first object for that.
        const bool hasDesign = search.getDesigns() != 0;
        if (search.getDesigns() > 1 || !(hasDesign ? tops.design : tops.first) || (!hasDesign && isModelNamed())) {
            return false;
        }
        if (std::string& quid = hasDesign ? quidOfDesign : quidOfFirst; !quid.empty()) {
            map.add(model_, {.file = 0, .begin = noPlace, .end = 0, .quid = std::move(quid)});
        }
        return true;
    }

    /// Returns false for an object whose place might be somewhere else.
    bool add(ObjectNumber number, SourcePlace place, SourceMap& map) const {
        const KelObject* object = trace_.getFate(number).object;
        if (isMadeAgain_[number] || object == &model_) {
            return false;
        }
        if (object != nullptr) {
            if (map.getCount() == 0) { // if one object has a quid, nearly all have
                map.reserve(isMade_.size());
            }
            map.add(*object, std::move(place));
        }
        return true;
    }

    static void takeFirst(const std::optional<std::uint64_t>& owner, const FoundQuid& found, std::string& quid) {
        if (owner == found.owner && quid.empty()) {
            quid = found.text;
        }
    }

    /// Whether the text has an effect by which the model might get another place.
    [[nodiscard]] bool isModelNamed() const {
        return std::ranges::any_of(trace_.getEffects(), [this](const Effect& effect) {
            const ObjectNumber number = effect.kind == EffectKind::changed ? effect.other : effect.object;
            return trace_.getFate(number).object == &model_;
        });
    }

    const units::UnitTree& tree_;
    const Trace& trace_;
    const KelModel& model_;
    std::vector<std::vector<Making>> makings_; // by file
    std::vector<bool> isMade_;                 // by number
    std::vector<bool> isMadeAgain_;            // likewise
};

} // namespace

SourceMap makeQuidMap(const units::UnitTree& tree, const Trace& trace, const KelModel& model) {
    std::optional<SourceMap> map = QuidGiver(tree, trace, model).make();
    return map ? std::move(*map) : makeSourceMap(tree, trace, model);
}

} // namespace source
