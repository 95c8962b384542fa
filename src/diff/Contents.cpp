#include "diff/Contents.h"

#include "host/text/KelTextHash.h"

#include <algorithm>
#include <string_view>

namespace diff {

namespace {

using Hash = std::uint64_t;

Hash hashOfText(std::string_view text) {
    return KelTextHash()(text);
}

Hash mixed(Hash one, Hash other) {
    Hash mix = (one ^ (other + 0x9E3779B97F4A7C15U + (one << 6U) + (one >> 2U))) * 0xFF51AFD7ED558CCDU;
    return mix ^ (mix >> 33U);
}

/// Weights of the likeness that are not 1. A type or a text written for one element says more than a flag does.
constexpr std::uint32_t plainWeight = 1;
constexpr std::uint32_t memberWeight = 2;
constexpr std::uint32_t tellingWeight = 4;
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

} // namespace

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

Contents::Contents(const std::array<const Model*, 2>& models, const Matching& matching)
    : models_(models), matching_(matching) {}
Contents::~Contents() = default;

/// The same for a target and its pair and, without a pair, for targets of one kind and name.
Contents::Hash Contents::hashOfTarget(Side side, ElementId target) const {
    if (isMatched(side, target)) {
        return mixed(1, side == 0 ? matching_.newOf[target] : target);
    }
    const Element& element = (*models_[side])[target];
    return mixed(mixed(2, static_cast<Hash>(element.kind)), hashOfText(element.name));
}

/// Of a field that has one value.
Contents::Hash Contents::hashOfOne(Side side, const Field& field) const {
    const auto start = static_cast<Hash>(field.id) + 1;
    switch (formOf(field.id)) {
    case ValueForm::text:
        return mixed(start, hashOfText(models_[side]->text(field)));
    case ValueForm::reference:
        return mixed(start, hashOfTarget(side, static_cast<ElementId>(field.value)));
    default:
        return mixed(start, field.value);
    }
}

/// Calls `take` with a hash for the value of a field, or for each of its values.
template <class Take>
void Contents::hashField(Side side, const Field& field, Take take) const {
    const Model& model = *models_[side];
    const auto start = static_cast<Hash>(field.id) + 1;
    switch (formOf(field.id)) {
    case ValueForm::texts:
        for (const std::string_view text : model.texts(field)) {
            take(mixed(start, hashOfText(text)));
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
std::uint64_t Contents::hashOf(Side side, ElementId top) const {
    const Model& model = *models_[side];
    Hash all = static_cast<Hash>(model[top].kind) + 1;
    const std::size_t end = std::min<std::size_t>(model[top].end, top + longestContent);
    for (auto id = top; id < end; ++id) {
        all = id == top ? all : mixed(mixed(all, static_cast<Hash>(model[id].kind)), hashOfText(model[id].name));
        for (const Field& field : model.fieldsOf(id)) {
            if (field.id != FieldId::position) {
                hashField(side, field, [&](Hash hash) { all = mixed(all, hash); });
            }
        }
    }
    return all == 0 ? 1 : all;
}

std::vector<Profile> Contents::profilesOf(Side side, std::span<const ElementId> ids) {
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
void Contents::addFeatures(Side side, ElementId id, Add add) {
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
        const Hash named = mixed(mixed(3, static_cast<Hash>(model[inner].kind)), hashOfText(model[inner].name));
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
void Contents::addNeighbours(Side side, ElementId id, Add add) {
    const Model& model = *models_[side];
    if (neighboursOf_[side] != model[id].owner) {
        neighboursOf_[side] = model[id].owner;
        neighbours_[side].clear();
        for (ElementId one = model.firstWithin(model[id].owner); one != noElement; one = model.nextWithin(one)) {
            neighbours_[side].push_back(one);
        }
    }
    const std::vector<ElementId>& all = neighbours_[side];
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
void Contents::addReferrers(Side side, ElementId id, Add add) {
    if (!referrers_[side]) {
        referrers_[side] = std::make_unique<Referrers>(*models_[side]);
    }
    const Model& model = *models_[side];
    for (const Referrers::Reference& reference : referrers_[side]->of(id)) {
        Hash all = mixed(mixed(7, static_cast<Hash>(reference.field)), hashOfText(model[reference.from].name));
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

} // namespace diff
