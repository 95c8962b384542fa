#include "diff/Matching.h"

#include "diff/Contents.h"
#include "diff/likeness.h"
#include "host/text/KelTextHash.h"

#include <algorithm>
#include <array>
#include <tsl/robin_map.h>
#include <utility>

namespace diff {

namespace {

using Hash = std::uint64_t;

constexpr std::array<std::string_view, 3> evidenceWords{"quid", "name", "content"};

/// Those that others refer to, and are therefore matched before these.
bool isReferredTo(Kind kind) {
    return kind == Kind::package || kind == Kind::classObject;
}

class Matcher {
public:
    Matcher(const Model& oldModel, const Model& newModel, Renames renames)
        : models_{&oldModel, &newModel}, renames_(renames), ownQuids_{OwnQuids(oldModel), OwnQuids(newModel)} {}

    Matching match() {
        start();
        const QuidPairs pairs = findQuidPairs();
        if (pairs.areRare) { // do the names say more?
            areQuidsUsed_ = false;
            matchNames();
            matching_.isByName = areMostNamesMatched();
            if (!matching_.isByName) {
                areQuidsUsed_ = true;
                start();
            }
        }
        if (!matching_.isByName) {
            if (renames_ != Renames::no) {
                for (const auto& [oldId, newId] : pairs.pairs) {
                    add(oldId, newId, Evidence::quid);
                }
            }
            matchNames();
        }
        matchWithin(true);
        matchTypesOfClasses();
        matchWithin(false);
        return std::move(matching_);
    }

private:
    using Ids = std::vector<ElementId>;

    struct QuidPairs {
        std::vector<std::pair<ElementId, ElementId>> pairs;
        bool areRare = false; // both models have quids, and hardly any in common
    };

    void start() {
        matching_ = {};
        matching_.newOf.assign(models_[0]->elements().size(), noElement);
        matching_.oldOf.assign(models_[1]->elements().size(), noElement);
        matching_.evidence.assign(models_[0]->elements().size(), Evidence::name);
        add(0, 0, Evidence::name);
    }

    /// Of the elements that are known by their names.
    [[nodiscard]] bool areMostNamesMatched() const {
        std::array<std::size_t, 2> named{};
        std::size_t matched = 0;
        for (Side side = 0; side < 2; ++side) {
            for (ElementId id = 1; id < models_[side]->elements().size(); ++id) {
                const Element& element = (*models_[side])[id];
                const bool isNamed =
                    !element.name.empty() &&
                    (isReferredTo(element.kind) || element.kind == Kind::attribute || element.kind == Kind::operation);
                named[side] += isNamed ? 1 : 0;
                matched += isNamed && side == 0 && isMatched(side, id) ? 1 : 0;
            }
        }
        return matched * 2 > std::min(named[0], named[1]);
    }

    void add(ElementId oldId, ElementId newId, Evidence evidence) {
        matching_.newOf[oldId] = newId;
        matching_.oldOf[newId] = oldId;
        matching_.evidence[oldId] = evidence;
    }

    /// Of elements of one name in owners that are a pair.
    void addNamed(ElementId oldId, ElementId newId) {
        add(oldId, newId, areQuidsUsed_ && haveQuid(oldId, newId) ? Evidence::quid : Evidence::name);
    }
    [[nodiscard]] bool haveQuid(ElementId oldId, ElementId newId) const {
        return ownQuids_[0][oldId] && ownQuids_[1][newId] && old()[oldId].quid == fresh()[newId].quid;
    }

    [[nodiscard]] const Model& old() const { return *models_[0]; }
    [[nodiscard]] const Model& fresh() const { return *models_[1]; }
    [[nodiscard]] bool isMatched(Side side, ElementId id) const {
        return (side == 0 ? matching_.newOf : matching_.oldOf)[id] != noElement;
    }

    [[nodiscard]] QuidPairs findQuidPairs() const {
        QuidPairs found;
        std::size_t oldCount = 0;
        std::size_t newCount = 0;
        for (ElementId id = 1; id < old().elements().size(); ++id) {
            oldCount += ownQuids_[0][id] ? 1 : 0;
        }
        for (ElementId id = 1; id < fresh().elements().size(); ++id) {
            if (!ownQuids_[1][id]) {
                continue;
            }
            ++newCount;
            const ElementId other = ownQuids_[0].find(fresh()[id].quid);
            if (other != noElement && other != 0 && old()[other].kind == fresh()[id].kind) {
                found.pairs.emplace_back(other, id);
            }
        }
        constexpr std::size_t hardlyAny = 20; // one in so many
        found.areRare = oldCount > 0 && newCount > 0 && found.pairs.size() * hardlyAny < std::min(oldCount, newCount);
        return found;
    }

    /// Matches what has a name that no other element of its kind and owner has, from the top down.
    void matchNames() {
        for (ElementId id = 0; id < old().elements().size(); ++id) {
            if (const ElementId other = matching_.newOf[id]; other != noElement) {
                matchNamesWithin(id, other, [](ElementId) { return true; });
            }
        }
    }

    /// The elements directly in an owner that have no pair, sorted by kind, name and place.
    template <class Takes>
    [[nodiscard]] Ids unmatchedWithin(Side side, ElementId owner, Takes takes) const {
        const Model& model = *models_[side];
        Ids ids;
        for (ElementId id = model.firstWithin(owner); id != noElement; id = model.nextWithin(id)) {
            if (!isMatched(side, id) && takes(id, side)) {
                ids.push_back(id);
            }
        }
        std::ranges::sort(ids, [&](ElementId one, ElementId other) {
            return std::tuple(model[one].kind, model[one].name, one) <
                   std::tuple(model[other].kind, model[other].name, other);
        });
        return ids;
    }

    template <class Function>
    void forGroups(const Ids& oldIds, const Ids& newIds, Function function) const {
        const auto keyOf = [](const Model& model, ElementId id) { return std::pair(model[id].kind, model[id].name); };
        auto oldAt = oldIds.begin();
        auto newAt = newIds.begin();
        while (oldAt != oldIds.end() && newAt != newIds.end()) {
            const auto oldKey = keyOf(old(), *oldAt);
            const auto newKey = keyOf(fresh(), *newAt);
            const auto oldEnd =
                std::find_if(oldAt, oldIds.end(), [&](ElementId id) { return keyOf(old(), id) != oldKey; });
            const auto newEnd =
                std::find_if(newAt, newIds.end(), [&](ElementId id) { return keyOf(fresh(), id) != newKey; });
            if (oldKey == newKey) {
                function(std::span(oldAt, oldEnd), std::span(newAt, newEnd));
            }
            oldAt = oldKey <= newKey ? oldEnd : oldAt;
            newAt = newKey <= oldKey ? newEnd : newAt;
        }
    }

    template <class Takes>
    void matchNamesWithin(ElementId oldOwner, ElementId newOwner, Takes takes) {
        const auto takesId = [&](ElementId id, Side) { return takes(id); };
        const Ids oldIds = unmatchedWithin(0, oldOwner, takesId);
        if (oldIds.empty()) {
            return;
        }
        const Ids newIds = unmatchedWithin(1, newOwner, takesId);
        forGroups(oldIds, newIds, [&](std::span<const ElementId> ones, std::span<const ElementId> others) {
            if (ones.size() == 1 && others.size() == 1 && !old()[ones[0]].name.empty()) {
                addNamed(ones[0], others[0]);
            }
        });
    }

    /// Matches, from the top down, what the names leave open. `isFirst`: only what others refer to.
    void matchWithin(bool isFirst) {
        const auto takes = [&](ElementId id, Side side) { return !isFirst || isReferredTo((*models_[side])[id].kind); };
        for (ElementId oldId = 0; oldId < old().elements().size(); ++oldId) {
            const ElementId newId = matching_.newOf[oldId];
            if (newId == noElement || unmatchedWithin(0, oldId, takes).empty() ||
                unmatchedWithin(1, newId, takes).empty()) {
                continue;
            }
            forGroups(
                unmatchedWithin(0, oldId, takes), unmatchedWithin(1, newId, takes),
                [&](std::span<const ElementId> ones, std::span<const ElementId> others) { matchGroup(ones, others); });
            if (renames_ == Renames::content) {
                matchContents(unmatchedWithin(0, oldId, takes), unmatchedWithin(1, newId, takes));
            }
        }
    }

    /// Elements of one kind, name and owner.
    void matchGroup(std::span<const ElementId> ones, std::span<const ElementId> others) {
        if (ones.size() == 1 && others.size() == 1 && !old()[ones[0]].name.empty()) {
            addNamed(ones[0], others[0]);
            return;
        }
        if (areQuidsUsed_) {
            matchEqual(ones, others, [&](Side side, ElementId id) {
                return ownQuids_[side][id] ? Hash{KelTextHash()((*models_[side])[id].quid)} : Hash{0};
            });
        }
        matchEqual(ones, others, [&](Side side, ElementId id) { return contents_.hashOf(side, id); });
        const Element& first = old()[ones[0]];
        if (!first.name.empty() || first.kind == Kind::role || first.kind == Kind::argument) {
            matchEqual(ones, others, [](Side, ElementId) { return Hash{1}; });
        }
    }

    /// Matches those with equal keys in their order; 0 is no key.
    template <class KeyOf>
    void matchEqual(std::span<const ElementId> ones, std::span<const ElementId> others, KeyOf keyOf) {
        using Keyed = std::pair<Hash, ElementId>;
        const auto keyed = [&](Side side, std::span<const ElementId> ids) {
            std::vector<Keyed> keys;
            for (const ElementId id : ids) {
                const Hash key = isMatched(side, id) ? Hash{0} : keyOf(side, id);
                if (key != 0) {
                    keys.emplace_back(key, id);
                }
            }
            std::ranges::sort(keys);
            return keys;
        };
        const std::vector<Keyed> oldKeys = keyed(0, ones);
        const std::vector<Keyed> newKeys = keyed(1, others);
        auto other = newKeys.begin();
        for (const auto& [key, id] : oldKeys) {
            while (other != newKeys.end() && other->first < key) {
                ++other;
            }
            if (other != newKeys.end() && other->first == key) {
                addNamed(id, other->second);
                ++other;
            }
        }
    }

    /// Matches elements by likeness, those of each kind apart.
    void matchContents(const Ids& oldIds, const Ids& newIds) {
        auto newAt = newIds.begin();
        for (auto oldAt = oldIds.begin(); oldAt != oldIds.end();) {
            const Kind kind = old()[*oldAt].kind;
            const auto oldEnd = std::find_if(oldAt, oldIds.end(), [&](ElementId id) { return old()[id].kind != kind; });
            newAt = std::find_if(newAt, newIds.end(), [&](ElementId id) { return fresh()[id].kind >= kind; });
            const auto newEnd =
                std::find_if(newAt, newIds.end(), [&](ElementId id) { return fresh()[id].kind != kind; });
            if (newAt != newEnd) {
                const std::vector<Profile> ones = contents_.profilesOf(0, std::span(oldAt, oldEnd));
                const std::vector<Profile> others = contents_.profilesOf(1, std::span(newAt, newEnd));
                for (const auto& [one, other] : pairsAlike(ones, others)) {
                    add(one, other, Evidence::content);
                }
            }
            oldAt = oldEnd;
            newAt = newEnd;
        }
    }

    /// Types are texts. One that is the name of a class which was renamed is still the same type.
    void matchTypesOfClasses() {
        if (renames_ != Renames::content) {
            return;
        }
        const auto classesByName = [&](Side side) {
            tsl::robin_map<std::string_view, ElementId, KelTextHash> classes;
            for (ElementId id = 1; id < models_[side]->elements().size(); ++id) {
                if ((*models_[side])[id].kind == Kind::classObject) {
                    const auto [found, isNew] = classes.try_emplace((*models_[side])[id].name, id);
                    found.value() = isNew ? id : noElement;
                }
            }
            return classes;
        };
        const auto isType = [&](ElementId id, Side side) { return (*models_[side])[id].kind == Kind::type; };
        const Ids oldTypes = unmatchedWithin(0, 0, isType);
        const Ids newTypes = unmatchedWithin(1, 0, isType);
        if (oldTypes.empty() || newTypes.empty()) {
            return;
        }
        const auto oldClasses = classesByName(0);
        const auto newClasses = classesByName(1);
        tsl::robin_map<ElementId, ElementId> newTypeOf; // by the new class that it means
        for (const ElementId id : newTypes) {
            const auto found = newClasses.find(fresh()[id].name);
            if (found != newClasses.end() && found->second != noElement) {
                const auto [type, isNew] = newTypeOf.try_emplace(found->second, id);
                type.value() = isNew ? id : noElement;
            }
        }
        for (const ElementId id : oldTypes) {
            const auto found = oldClasses.find(old()[id].name);
            const ElementId meant = found != oldClasses.end() ? found->second : noElement;
            const auto type = meant != noElement ? newTypeOf.find(matching_.newOf[meant]) : newTypeOf.end();
            if (type != newTypeOf.end() && type->second != noElement && !isMatched(1, type->second)) {
                add(id, type->second, Evidence::content);
            }
        }
    }

    std::array<const Model*, 2> models_;
    Renames renames_;
    std::array<OwnQuids, 2> ownQuids_;
    bool areQuidsUsed_ = true;
    Matching matching_;
    Contents contents_{models_, matching_};
};

} // namespace

std::string_view evidenceWord(Evidence evidence) {
    return evidenceWords.at(static_cast<std::size_t>(evidence));
}

Matching matchModels(const Model& oldModel, const Model& newModel, Renames renames) {
    return Matcher(oldModel, newModel, renames).match();
}

} // namespace diff
