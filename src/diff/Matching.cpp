#include "diff/Matching.h"

#include "host/text/KelTextHash.h"

#include <algorithm>
#include <array>
#include <tsl/robin_map.h>
#include <utility>

namespace diff {

namespace {

constexpr std::array<std::string_view, 3> evidenceWords{"quid", "name", "content"};

using Hash = std::uint64_t;

Hash hashOf(std::string_view text) {
    return KelTextHash()(text);
}

Hash mixed(Hash one, Hash other) {
    Hash mix = (one ^ (other + 0x9E3779B97F4A7C15U + (one << 6U) + (one >> 2U))) * 0xFF51AFD7ED558CCDU;
    return mix ^ (mix >> 33U);
}

/// Something that an element has and that makes it like others.
struct Feature {
    Hash hash;
    std::uint32_t weight;
};

/// An element with its features, sorted by their hashes.
struct Profile {
    ElementId id;
    std::vector<Feature> features;
    std::uint64_t total = 0;
};

/// Weights of the likeness that are not 1. A type or a text written for one element says more than a flag does.
constexpr std::uint32_t plainWeight = 1;
constexpr std::uint32_t memberWeight = 2;
constexpr std::uint32_t tellingWeight = 4;
constexpr std::size_t rareEnough = 8;        // so many elements of each model may share a feature that makes candidates
constexpr std::size_t longestContent = 1000; // elements within one that are looked at

std::uint32_t weightOf(FieldId field) {
    switch (field) {
    case FieldId::position:
        return 0; // depends on the others
    case FieldId::description:
    case FieldId::type:
    case FieldId::returnType:
    case FieldId::classOfRole:
        return tellingWeight;
    default:
        return formOf(field) == ValueForm::flag || formOf(field) == ValueForm::number ? plainWeight : memberWeight;
    }
}

bool isPart(Kind kind) {
    return kind == Kind::attribute || kind == Kind::operation || kind == Kind::argument || kind == Kind::role ||
           kind == Kind::key;
}

/// Those that others refer to, and are therefore matched before these.
bool isReferredTo(Kind kind) {
    return kind == Kind::package || kind == Kind::classObject;
}

/// Adds, for every class of a model, the elements that refer to it.
class Referrers {
public:
    struct Reference {
        ElementId target;
        ElementId from;
        FieldId field;
    };

    explicit Referrers(const Model& model) {
        for (ElementId id = 0; id < model.elements().size(); ++id) {
            for (const Field& field : model.fieldsOf(id)) {
                if (formOf(field.id) == ValueForm::reference) {
                    add(model, static_cast<ElementId>(field.value), id, field.id);
                } else if (formOf(field.id) == ValueForm::references) {
                    for (const ElementId target : model.references(field)) {
                        add(model, target, id, field.id);
                    }
                }
            }
        }
        std::ranges::stable_sort(references_, {}, &Reference::target);
    }

    [[nodiscard]] std::span<const Reference> of(ElementId target) const {
        return {std::ranges::lower_bound(references_, target, {}, &Reference::target),
                std::ranges::upper_bound(references_, target, {}, &Reference::target)};
    }

private:
    void add(const Model& model, ElementId target, ElementId from, FieldId field) {
        if (model[target].kind == Kind::classObject) {
            references_.push_back({target, from, field});
        }
    }

    std::vector<Reference> references_;
};

class Matcher {
public:
    Matcher(const Model& oldModel, const Model& newModel, Renames renames)
        : models_{&oldModel, &newModel}, renames_(renames), ownQuids_{findOwnQuids(oldModel), findOwnQuids(newModel)} {}

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
    using Side = std::size_t; // 0: old, 1: new
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
        tsl::robin_map<std::string_view, ElementId, KelTextHash> byQuid;
        std::size_t oldCount = 0;
        std::size_t newCount = 0;
        for (ElementId id = 1; id < old().elements().size(); ++id) {
            if (ownQuids_[0][id]) {
                byQuid.emplace(old()[id].quid, id);
                ++oldCount;
            }
        }
        for (ElementId id = 1; id < fresh().elements().size(); ++id) {
            if (!ownQuids_[1][id]) {
                continue;
            }
            ++newCount;
            const auto other = byQuid.find(fresh()[id].quid);
            if (other != byQuid.end() && old()[other->second].kind == fresh()[id].kind) {
                found.pairs.emplace_back(other->second, id);
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
                return ownQuids_[side][id] ? hashOf((*models_[side])[id].quid) : Hash{0};
            });
        }
        matchEqual(ones, others, [&](Side side, ElementId id) { return contentHash(side, id); });
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

    /// The same for a target and its pair and, without a pair, for targets of one kind and name.
    [[nodiscard]] Hash hashOfTarget(Side side, ElementId target) const {
        if (isMatched(side, target)) {
            return mixed(1, side == 0 ? matching_.newOf[target] : target);
        }
        const Element& element = (*models_[side])[target];
        return mixed(mixed(2, static_cast<Hash>(element.kind)), hashOf(element.name));
    }

    /// Of a field that has one value.
    [[nodiscard]] Hash hashOfOne(Side side, const Field& field) const {
        const auto start = static_cast<Hash>(field.id) + 1;
        switch (formOf(field.id)) {
        case ValueForm::text:
            return mixed(start, hashOf(models_[side]->text(field)));
        case ValueForm::reference:
            return mixed(start, hashOfTarget(side, static_cast<ElementId>(field.value)));
        default:
            return mixed(start, field.value);
        }
    }

    /// Calls `take` with a hash for the value of a field, or for each of its values.
    template <class Take>
    void hashField(Side side, const Field& field, Take take) const {
        const Model& model = *models_[side];
        const auto start = static_cast<Hash>(field.id) + 1;
        switch (formOf(field.id)) {
        case ValueForm::texts:
            for (const std::string_view text : model.texts(field)) {
                take(mixed(start, hashOf(text)));
            }
            break;
        case ValueForm::references:
            for (const ElementId target : model.references(field)) {
                take(mixed(start, hashOfTarget(side, target)));
            }
            break;
        case ValueForm::records:
            for (const Record& record : model.records(field)) {
                Hash all = start;
                for (const Field& inner : model.fieldsOf(record)) {
                    all = mixed(all, hashOfOne(side, inner));
                }
                take(all);
            }
            break;
        default:
            take(hashOfOne(side, field));
        }
    }

    /// Of what an element has, and what is in it, but its name.
    [[nodiscard]] Hash contentHash(Side side, ElementId top) const {
        const Model& model = *models_[side];
        Hash all = static_cast<Hash>(model[top].kind) + 1;
        const std::size_t end = std::min<std::size_t>(model[top].end, top + longestContent);
        for (auto id = top; id < end; ++id) {
            all = id == top ? all : mixed(mixed(all, static_cast<Hash>(model[id].kind)), hashOf(model[id].name));
            for (const Field& field : model.fieldsOf(id)) {
                if (field.id != FieldId::position) {
                    hashField(side, field, [&](Hash hash) { all = mixed(all, hash); });
                }
            }
        }
        return all == 0 ? 1 : all;
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
                matchAlike(profilesOf(0, std::span(oldAt, oldEnd)), profilesOf(1, std::span(newAt, newEnd)));
            }
            oldAt = oldEnd;
            newAt = newEnd;
        }
    }

    [[nodiscard]] std::vector<Profile> profilesOf(Side side, std::span<const ElementId> ids) {
        std::vector<Profile> profiles;
        for (const ElementId id : ids) {
            Profile profile{.id = id, .features = {}};
            const auto add = [&](Hash hash, std::uint32_t weight) {
                if (weight > 0) {
                    profile.features.push_back({hash, weight});
                    profile.total += weight;
                }
            };
            addFeatures(side, id, add);
            std::ranges::sort(profile.features, {}, &Feature::hash);
            profiles.push_back(std::move(profile));
        }
        return profiles;
    }

    template <class Add>
    void addFeatures(Side side, ElementId id, Add add) {
        const Model& model = *models_[side];
        const Element& element = model[id];
        for (const Field& field : model.fieldsOf(id)) {
            const bool isUsual = field.id == FieldId::category && model.text(field) == "class";
            const bool isOfPart = field.id == FieldId::visibility && !isPart(element.kind);
            if (!isUsual && !isOfPart && (element.kind != Kind::type || field.id == FieldId::values)) {
                hashField(side, field, [&](Hash hash) { add(hash, weightOf(field.id)); });
            }
        }
        for (ElementId inner = model.firstWithin(id); inner != noElement; inner = model.nextWithin(inner)) {
            const Hash named = mixed(mixed(3, static_cast<Hash>(model[inner].kind)), hashOf(model[inner].name));
            Hash typed = named;
            for (const FieldId field : {FieldId::type, FieldId::returnType, FieldId::classOfRole}) {
                if (const Field* found = model.find(inner, field)) {
                    typed = mixed(typed, hashOfTarget(side, static_cast<ElementId>(found->value)));
                }
            }
            add(named, plainWeight);
            add(mixed(4, typed), model[inner].kind == Kind::role ? tellingWeight : plainWeight);
        }
        if (isPart(element.kind)) {
            addNeighbours(side, id, add);
        }
        if (element.kind == Kind::classObject) {
            addReferrers(side, id, add);
        }
    }

    /// The elements of its kind before and after it in its owner, as far as they have a pair.
    template <class Add>
    void addNeighbours(Side side, ElementId id, Add add) {
        const Model& model = *models_[side];
        if (neighboursOf_[side] != model[id].owner) {
            neighboursOf_[side] = model[id].owner;
            neighbours_[side].clear();
            for (ElementId one = model.firstWithin(model[id].owner); one != noElement; one = model.nextWithin(one)) {
                neighbours_[side].push_back(one);
            }
        }
        const Ids& all = neighbours_[side];
        const auto place = std::ranges::lower_bound(all, id);
        const auto addOne = [&](Hash direction, bool isThere, ElementId neighbour) {
            if (!isThere || model[neighbour].kind != model[id].kind) {
                add(mixed(direction, 0), memberWeight); // the first or last one
            } else if (isMatched(side, neighbour)) {
                add(mixed(direction, hashOfTarget(side, neighbour)), memberWeight);
            }
        };
        addOne(5, place != all.begin(), place != all.begin() ? *(place - 1) : id);
        addOne(6, place + 1 != all.end(), place + 1 != all.end() ? *(place + 1) : id);
    }

    /// The relations of a class, each with the name and what else it refers to.
    template <class Add>
    void addReferrers(Side side, ElementId id, Add add) {
        if (!referrers_[side]) {
            referrers_[side] = std::make_unique<Referrers>(*models_[side]);
        }
        const Model& model = *models_[side];
        for (const Referrers::Reference& reference : referrers_[side]->of(id)) {
            Hash all = mixed(mixed(7, static_cast<Hash>(reference.field)), hashOf(model[reference.from].name));
            const bool isRole = model[reference.from].kind == Kind::role;
            const ElementId relation = isRole ? model[reference.from].owner : reference.from;
            if (model[relation].kind == Kind::diagram) {
                add(mixed(8, hashOfTarget(side, relation)), plainWeight);
                continue;
            }
            Hash others = 0; // whatever their order
            const ElementId end = std::min<ElementId>(model[relation].end, relation + longestContent);
            for (ElementId part = relation; part < end; ++part) {
                for (const Field& field : model.fieldsOf(part)) {
                    if (part != reference.from && formOf(field.id) == ValueForm::reference) {
                        others += hashOfTarget(side, static_cast<ElementId>(field.value));
                    } else if (part == relation && field.id != reference.field &&
                               (field.id == FieldId::subtypes || field.id == FieldId::supertypes ||
                                formOf(field.id) == ValueForm::reference)) {
                        hashField(side, field, [&](Hash hash) { others += hash; });
                    }
                }
            }
            add(mixed(all, others), memberWeight);
        }
    }

    /// How alike two elements are: weights that they share, of those that one of them has.
    struct Likeness {
        std::uint64_t shared = 0;
        std::uint64_t all = 1;

        friend bool operator<(const Likeness& one, const Likeness& other) {
            return one.shared * other.all < other.shared * one.all;
        }
        [[nodiscard]] bool isEnough() const { return shared * 100 >= all * 60; }
    };

    static Likeness likenessOf(const Profile& one, const Profile& other) {
        std::uint64_t shared = 0;
        auto mine = one.features.begin();
        auto theirs = other.features.begin();
        while (mine != one.features.end() && theirs != other.features.end()) {
            if (mine->hash < theirs->hash) {
                ++mine;
            } else if (theirs->hash < mine->hash) {
                ++theirs;
            } else {
                shared += mine->weight;
                ++mine;
                ++theirs;
            }
        }
        return {shared, std::max<std::uint64_t>(one.total + other.total - shared, 1)};
    }

    /// The best match of an element so far, and whether another one is as good.
    struct Best {
        Likeness likeness;
        std::size_t index = 0;
        bool isOnly = false;

        void offer(const Likeness& offered, std::size_t from) {
            if (likeness < offered) {
                *this = {offered, from, true};
            } else if (!(offered < likeness)) {
                isOnly = false;
            }
        }
    };

    void matchAlike(const std::vector<Profile>& ones, const std::vector<Profile>& others) {
        std::vector<Best> bestOfOnes(ones.size());
        std::vector<Best> bestOfOthers(others.size());
        for (const auto& [one, other] : candidates(ones, others)) {
            const Likeness likeness = likenessOf(ones[one], others[other]);
            if (likeness.isEnough()) {
                bestOfOnes[one].offer(likeness, other);
                bestOfOthers[other].offer(likeness, one);
            }
        }
        for (std::size_t one = 0; one < ones.size(); ++one) {
            const Best& best = bestOfOnes[one];
            if (best.isOnly && bestOfOthers[best.index].isOnly && bestOfOthers[best.index].index == one) {
                add(ones[one].id, others[best.index].id, Evidence::content);
            }
        }
    }

    /// The pairs that share a feature which few have, so that no kind of model makes all pairs candidates.
    static std::vector<std::pair<std::uint32_t, std::uint32_t>> candidates(const std::vector<Profile>& ones,
                                                                           const std::vector<Profile>& others) {
        using Posting = std::pair<Hash, std::uint32_t>;
        const auto postingsOf = [](const std::vector<Profile>& profiles) {
            std::vector<Posting> postings;
            for (std::uint32_t index = 0; index < profiles.size(); ++index) {
                for (const Feature& feature : profiles[index].features) {
                    if (postings.empty() || postings.back() != Posting(feature.hash, index)) {
                        postings.emplace_back(feature.hash, index);
                    }
                }
            }
            std::ranges::sort(postings);
            return postings;
        };
        const std::vector<Posting> mine = postingsOf(ones);
        const std::vector<Posting> theirs = postingsOf(others);
        std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
        for (auto at = mine.begin(); at != mine.end();) {
            const auto end = std::find_if(at, mine.end(), [&](const Posting& one) { return one.first != at->first; });
            const std::span<const Posting> found(std::ranges::lower_bound(theirs, at->first, {}, &Posting::first),
                                                 std::ranges::upper_bound(theirs, at->first, {}, &Posting::first));
            if (static_cast<std::size_t>(end - at) <= rareEnough && found.size() <= rareEnough) {
                for (auto one = at; one != end; ++one) {
                    for (const Posting& other : found) {
                        pairs.emplace_back(one->second, other.second);
                    }
                }
            }
            at = end;
        }
        std::ranges::sort(pairs);
        pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
        return pairs;
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
    std::array<std::vector<bool>, 2> ownQuids_;
    bool areQuidsUsed_ = true;
    Matching matching_;
    std::array<std::unique_ptr<Referrers>, 2> referrers_; // made when they are needed
    std::array<ElementId, 2> neighboursOf_{noElement, noElement};
    std::array<Ids, 2> neighbours_; // of the elements in that owner
};

} // namespace

std::string_view evidenceWord(Evidence evidence) {
    return evidenceWords.at(static_cast<std::size_t>(evidence));
}

Matching matchModels(const Model& oldModel, const Model& newModel, Renames renames) {
    return Matcher(oldModel, newModel, renames).match();
}

} // namespace diff
