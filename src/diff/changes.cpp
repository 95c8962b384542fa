#include "diff/changes.h"

#include "diff/ChangeTree.h"
#include "diff/labels.h"
#include "export/relationships.h"

#include <algorithm>
#include <array>
#include <utility>

namespace diff {

namespace {

/// The list of the JSON document in which an owner has elements of a kind.
std::string_view listName(Kind kind) {
    switch (kind) {
    case Kind::type:
        return "types";
    case Kind::package:
        return "packages";
    case Kind::diagram:
        return "diagrams";
    case Kind::attribute:
        return "attributes";
    case Kind::operation:
        return "operations";
    case Kind::argument:
        return "arguments";
    case Kind::key:
        return "keys";
    case Kind::role:
        return "roles";
    default:
        return "elements";
    }
}

/// The words of visibility, from the one that most may use.
constexpr std::array<std::string_view, 4> visibilities{"public", "protected", "private", "implementation"};

/// Finds what differs in elements that are a pair.
class Comparer {
public:
    Comparer(const Model& oldModel, const Model& newModel, const Matching& matching, const Shown& shown,
             std::vector<Change>& changes)
        : old_(oldModel), new_(newModel), matching_(matching), shown_(shown), changes_(changes) {}

    void compare() {
        for (ElementId id = 1; id < old_.elements().size(); ++id) {
            if (matching_.newOf[id] == noElement) {
                add(ruleFor(old_[id].kind, Verb::removed), Subject::existence, id, noElement);
            }
        }
        for (ElementId id = 0; id < new_.elements().size(); ++id) {
            if (matching_.oldOf[id] == noElement) {
                add(ruleFor(new_[id].kind, Verb::added), Subject::existence, noElement, id);
            } else {
                comparePair(matching_.oldOf[id], id);
            }
        }
    }

private:
    Change& add(RuleId rule, Subject subject, ElementId oldId, ElementId newId) {
        const Kind kind = newId != noElement ? new_[newId].kind : old_[oldId].kind;
        return changes_.emplace_back(
            Change{.rule = rule, .kind = kind, .subject = subject, .oldId = oldId, .newId = newId});
    }

    void comparePair(ElementId oldId, ElementId newId) {
        const Element& one = old_[oldId];
        const Element& other = new_[newId];
        if (oldId != 0) { // the model has the name of its file
            if (one.name != other.name) {
                add(ruleFor(one.kind, Verb::renamed), Subject::name, oldId, newId);
            }
            if (matching_.newOf[one.owner] != other.owner) {
                add(ruleFor(one.kind, Verb::moved), Subject::owner, oldId, newId);
            }
        }
        compareFields(oldId, newId);
        compareOrder(oldId, newId);
        if (shown_.quids && one.quid != other.quid) {
            add(ruleNamed("quid-changed"), Subject::quid, oldId, newId);
        }
        if (shown_.units && old_.files()[one.file] != new_.files()[other.file]) {
            add(ruleNamed("unit-changed"), Subject::unit, oldId, newId);
        }
        if (shown_.encoding && oldId == 0 && encodings(old_) != encodings(new_)) {
            add(ruleNamed("encoding-changed"), Subject::encoding, oldId, newId);
        }
    }

    void compareFields(ElementId oldId, ElementId newId) {
        const std::span<const Field> ones = old_.fieldsOf(oldId);
        const std::span<const Field> others = new_.fieldsOf(newId);
        auto one = ones.begin();
        auto other = others.begin();
        while (one != ones.end() || other != others.end()) {
            const bool isInOld = one != ones.end() && (other == others.end() || one->id <= other->id);
            const bool isInNew = other != others.end() && (one == ones.end() || other->id <= one->id);
            const FieldId id = isInOld ? one->id : other->id;
            const Field* oldField = isInOld ? &*one++ : nullptr;
            const Field* newField = isInNew ? &*other++ : nullptr;
            compareField(oldId, newId, id, oldField, newField);
        }
    }

    /// Null for a side that has the value of a field left out.
    void compareField(ElementId oldId, ElementId newId, FieldId id, const Field* one, const Field* other) {
        if (one != nullptr && other != nullptr && areEqual(*one, *other)) {
            return;
        }
        const FieldRule* rule = fieldRule(id);
        if (rule == nullptr) {
            return;
        }
        if (id == FieldId::origins && (one == nullptr || other == nullptr)) {
            return; // one of the models is none
        }
        std::string name(rule->rule);
        if (id == FieldId::type && old_[oldId].kind == Kind::argument) {
            name = "argument-type-changed";
        }
        name += directionOf(rule->comparison, one, other);
        add(ruleNamed(name), Subject::field, oldId, newId).field = id;
    }

    [[nodiscard]] bool areEqual(const Field& one, const Field& other) const {
        switch (formOf(one.id)) {
        case ValueForm::text:
            return old_.text(one) == new_.text(other);
        case ValueForm::number:
        case ValueForm::flag:
            return one.value == other.value;
        case ValueForm::reference:
            return matching_.newOf[static_cast<ElementId>(one.value)] == other.value;
        case ValueForm::texts:
            return sorted(old_.texts(one)) == sorted(new_.texts(other));
        case ValueForm::references: {
            std::vector<ElementId> targets = sorted(old_.references(one));
            std::ranges::transform(targets, targets.begin(), [&](ElementId id) { return matching_.newOf[id]; });
            std::ranges::sort(targets);
            return targets == sorted(new_.references(other));
        }
        case ValueForm::records:
            return recordKeys(old_, one, &matching_.newOf) == recordKeys(new_, other, nullptr);
        }
        return false;
    }

    template <class T>
    static std::vector<std::remove_const_t<T>> sorted(std::span<T> values) {
        std::vector<std::remove_const_t<T>> list(values.begin(), values.end());
        std::ranges::sort(list);
        return list;
    }

    /// A text for each record that is the same for equal ones. The file's path and encoding do not count. `newOf`, if
    /// there is one, maps the targets of references.
    static std::vector<std::string> recordKeys(const Model& model, const Field& field,
                                               const std::vector<ElementId>* newOf) {
        std::vector<std::string> keys;
        for (const Record& record : model.records(field)) {
            std::string key;
            for (const Field& inner : model.fieldsOf(record)) {
                if (inner.id == FieldId::sourcePath || inner.id == FieldId::sourceEncoding) {
                    continue;
                }
                key += std::to_string(static_cast<int>(inner.id)) + "=";
                if (formOf(inner.id) == ValueForm::text) {
                    key += std::to_string(inner.size) + ":" + std::string(model.text(inner)) + ";";
                } else {
                    const bool isMapped = newOf != nullptr && formOf(inner.id) == ValueForm::reference;
                    key += std::to_string(isMapped ? (*newOf)[inner.value] : inner.value) + ";";
                }
            }
            if (!key.empty()) {
                keys.push_back(std::move(key));
            }
        }
        std::ranges::sort(keys);
        return keys;
    }

    /// The end of a rule's name.
    [[nodiscard]] std::string directionOf(Comparison comparison, const Field* one, const Field* other) const {
        switch (comparison) {
        case Comparison::plain:
            return "";
        case Comparison::multiplicity:
            return multiplicityDirection(exporter::boundsOf(old_.text(one)), exporter::boundsOf(new_.text(other)));
        case Comparison::visibility: {
            const auto from = std::ranges::find(visibilities, old_.text(one));
            const auto to = std::ranges::find(visibilities, new_.text(other));
            return from == visibilities.end() || to == visibilities.end() ? "-changed"
                   : from < to                                            ? "-narrowed"
                                                                          : "-widened";
        }
        case Comparison::navigability:
            return one != nullptr ? "-narrowed" : "-widened";
        case Comparison::size: {
            const auto from = static_cast<std::int64_t>(one != nullptr ? one->value : 0);
            const auto to = static_cast<std::int64_t>(other != nullptr ? other->value : 0);
            return to < from ? "-narrowed" : "-widened";
        }
        }
        return "";
    }

    using Bounds = std::optional<exporter::Bounds>;

    static std::string multiplicityDirection(const Bounds& from, const Bounds& to) {
        if (!from || !to || !from->isExact || !to->isExact) {
            return "-changed"; // also for one that was not given: nobody knows what it allowed
        }
        const auto includes = [](const exporter::Bounds& one, const exporter::Bounds& other) {
            return one.lower <= other.lower && (!one.upper || (other.upper && *other.upper <= *one.upper));
        };
        const bool isNarrowed = includes(*from, *to);
        const bool isWidened = includes(*to, *from);
        return isNarrowed && isWidened ? "-respelled" : isNarrowed ? "-narrowed" : isWidened ? "-widened" : "-changed";
    }

    /// The order of arguments is a part of what they are for; that of other elements counts if it is asked for.
    void compareOrder(ElementId oldId, ElementId newId) {
        std::array<bool, kindCount> isReordered{};
        std::array<ElementId, kindCount> last{};
        for (ElementId id = old_.firstWithin(oldId); id != noElement; id = old_.nextWithin(id)) {
            const ElementId other = matching_.newOf[id];
            if (other != noElement && new_[other].owner == newId) {
                const auto list = static_cast<std::size_t>(listOf(old_[id].kind));
                isReordered[list] = isReordered[list] || other < last[list];
                last[list] = std::max(last[list], other);
            }
        }
        for (std::size_t index = 0; index < kindCount; ++index) {
            const bool isCounted = static_cast<Kind>(index) == Kind::argument;
            if (isReordered[index] && (isCounted || shown_.order)) {
                add(ruleNamed(isCounted ? "argument-order-changed" : "order-changed"), Subject::order, oldId, newId)
                    .detail = static_cast<std::uint32_t>(index);
            }
        }
        if (shown_.order && old_[oldId].kind == Kind::diagram && isDrawnInOtherOrder(oldId, newId)) {
            add(ruleNamed("order-changed"), Subject::diagramOrder, oldId, newId);
        }
    }

    /// Elements of several kinds share a list.
    static Kind listOf(Kind kind) { return listName(kind) == "elements" ? Kind::classObject : kind; }

    [[nodiscard]] bool isDrawnInOtherOrder(ElementId oldId, ElementId newId) const {
        const Field* one = old_.find(oldId, FieldId::diagramElements);
        const Field* other = new_.find(newId, FieldId::diagramElements);
        return one != nullptr && other != nullptr && areEqual(*one, *other) &&
               !std::ranges::equal(old_.references(*one), new_.references(*other), {},
                                   [&](ElementId id) { return matching_.newOf[id]; });
    }

    static std::vector<std::string_view> encodings(const Model& model) {
        std::vector<std::string_view> found;
        if (const Field* origins = model.find(0, FieldId::origins)) {
            for (const Record& record : model.records(*origins)) {
                for (const Field& field : model.fieldsOf(record)) {
                    if (field.id == FieldId::sourceEncoding) {
                        found.push_back(model.text(field));
                    }
                }
            }
        }
        return found;
    }

    const Model& old_;
    const Model& new_;
    const Matching& matching_;
    const Shown& shown_;
    std::vector<Change>& changes_;
};

/// The values of changes, for people and programs: references are qualified names.
class Values {
public:
    Values(const Model& model, const Model& otherModel, const std::vector<ElementId>& others)
        : model_(model), otherModel_(otherModel), others_(others) {}

    [[nodiscard]] Value fieldValue(ElementId id, FieldId field, ElementId otherId) const {
        const Field* found = model_.find(id, field);
        switch (formOf(field)) {
        case ValueForm::text:
            return std::string(model_.text(found));
        case ValueForm::number:
            return static_cast<std::int64_t>(found != nullptr ? found->value : 0);
        case ValueForm::flag:
            return found != nullptr;
        case ValueForm::reference:
            return found != nullptr ? Value(nameOf(static_cast<ElementId>(found->value))) : Value();
        case ValueForm::texts:
            return found != nullptr
                       ? Value(std::vector<std::string>(model_.texts(*found).begin(), model_.texts(*found).end()))
                       : Value(std::vector<std::string>{});
        case ValueForm::references:
            return found != nullptr ? namesOf(*found, field == FieldId::diagramElements ? otherId : noElement)
                                    : Value(std::vector<std::string>{});
        case ValueForm::records:
            return found != nullptr ? recordTexts(*found) : Value(std::vector<std::string>{});
        }
        return {};
    }

    /// The name of a target with what tells it from others of that name.
    [[nodiscard]] Value distinctName(ElementId id, FieldId field) const {
        const auto target = static_cast<ElementId>(model_.find(id, field)->value);
        const Element& element = model_[target];
        std::string mark(element.quid);
        if (element.kind == Kind::type) {
            mark = std::string(model_.text(model_.find(target, FieldId::typeKind))) + " " +
                   std::string(model_.text(model_.find(target, FieldId::dataType)));
        }
        return nameOf(target) + " (" + mark + ")";
    }

    /// The names of the elements of one kind in an owner.
    [[nodiscard]] Value listOf(ElementId owner, Kind kind) const {
        std::vector<std::string> names;
        for (ElementId id = model_.firstWithin(owner); id != noElement; id = model_.nextWithin(id)) {
            if (listName(model_[id].kind) == listName(kind)) {
                names.emplace_back(model_[id].name);
            }
        }
        return names;
    }

    [[nodiscard]] Value encodings() const {
        std::vector<std::string> found;
        if (const Field* origins = model_.find(0, FieldId::origins)) {
            for (const Record& record : model_.records(*origins)) {
                for (const Field& field : model_.fieldsOf(record)) {
                    if (field.id == FieldId::sourceEncoding) {
                        found.emplace_back(model_.text(field));
                    }
                }
            }
        }
        return found.empty() ? Value(std::string()) : Value(found.front());
    }

private:
    [[nodiscard]] std::string nameOf(ElementId id) const { return describedName(model_, id); }

    /// Of all targets or, with the diagram of the other model, of those that it does not show.
    [[nodiscard]] Value namesOf(const Field& field, ElementId otherId) const {
        std::vector<ElementId> shown;
        const Field* other = otherId != noElement ? otherModel_.find(otherId, field.id) : nullptr;
        if (other != nullptr) {
            const std::span<const ElementId> targets = otherModel_.references(*other);
            shown.assign(targets.begin(), targets.end());
            std::ranges::sort(shown);
        }
        std::vector<std::string> names;
        for (const ElementId id : model_.references(field)) {
            const auto found = std::ranges::lower_bound(shown, others_[id]);
            if (others_[id] != noElement && found != shown.end() && *found == others_[id]) {
                shown.erase(found);
            } else {
                names.push_back(nameOf(id));
            }
        }
        return names;
    }

    [[nodiscard]] Value recordTexts(const Field& field) const {
        std::vector<std::string> texts;
        for (const Record& record : model_.records(field)) {
            std::string text;
            for (const Field& inner : model_.fieldsOf(record)) {
                if (inner.id == FieldId::sourcePath || inner.id == FieldId::sourceEncoding) {
                    continue;
                }
                const bool isTarget = formOf(inner.id) == ValueForm::reference;
                text += (text.empty() ? "" : " ");
                text += inner.id == FieldId::recordName ? "" : std::string(memberName(inner.id)) + " ";
                text += isTarget                              ? nameOf(static_cast<ElementId>(inner.value))
                        : formOf(inner.id) == ValueForm::text ? std::string(model_.text(inner))
                                                              : std::to_string(inner.value);
            }
            texts.push_back(std::move(text));
        }
        return texts;
    }

    const Model& model_;
    const Model& otherModel_;
    const std::vector<ElementId>& others_;
};

} // namespace

Difference::Difference(const Model& oldModel, const Model& newModel, Renames renames, const Shown& shown)
    : old_(oldModel), new_(newModel), matching_(matchModels(oldModel, newModel, renames)) {
    Comparer(old_, new_, matching_, shown, changes_).compare();
    changes_ = inTreeOrder(*this, changes_);
}

void Difference::addLayout(std::vector<LayoutChange> changes) {
    layout_ = std::move(changes);
    for (std::uint32_t index = 0; index < layout_.size(); ++index) {
        changes_.push_back(
            {.rule = ruleNamed("layout-changed"), .kind = Kind::diagram, .subject = Subject::layout, .detail = index});
    }
}

std::string Difference::fieldOf(const Change& change) const {
    switch (change.subject) {
    case Subject::existence:
        return "";
    case Subject::name:
        return "name";
    case Subject::owner:
        return "owner";
    case Subject::field:
        return std::string(memberName(change.field));
    case Subject::order:
        return std::string(listName(static_cast<Kind>(change.detail)));
    case Subject::diagramOrder:
        return "elements";
    case Subject::quid:
        return "quid";
    case Subject::unit:
        return "file";
    case Subject::encoding:
        return "sourceEncoding";
    case Subject::layout:
        return layout_[change.detail].view;
    }
    return "";
}

std::pair<Value, Value> Difference::valuesOf(const Change& change) const {
    const ElementId one = change.oldId;
    const ElementId other = change.newId;
    const Values olds(old_, new_, matching_.newOf);
    const Values news(new_, old_, matching_.oldOf);
    switch (change.subject) {
    case Subject::existence:
        return {};
    case Subject::name:
        return {std::string(old_[one].name), std::string(new_[other].name)};
    case Subject::owner: {
        const auto ownerOf = [](const Model& model, ElementId id) {
            return model[id].owner == 0 ? std::string() : qualifiedName(model, model[id].owner);
        };
        return {ownerOf(old_, one), ownerOf(new_, other)};
    }
    case Subject::field: {
        std::pair<Value, Value> values{olds.fieldValue(one, change.field, other),
                                       news.fieldValue(other, change.field, one)};
        if (formOf(change.field) == ValueForm::reference && values.first == values.second) {
            return {olds.distinctName(one, change.field), news.distinctName(other, change.field)};
        }
        return values;
    }
    case Subject::order:
        return {olds.listOf(one, static_cast<Kind>(change.detail)),
                news.listOf(other, static_cast<Kind>(change.detail))};
    case Subject::diagramOrder:
        return {olds.fieldValue(one, FieldId::diagramElements, noElement),
                news.fieldValue(other, FieldId::diagramElements, noElement)};
    case Subject::quid:
        return {std::string(old_[one].quid), std::string(new_[other].quid)};
    case Subject::unit:
        return {old_.files()[old_[one].file], new_.files()[new_[other].file]};
    case Subject::encoding:
        return {olds.encodings(), news.encodings()};
    case Subject::layout:
        return {layout_[change.detail].from, layout_[change.detail].to};
    }
    return {};
}

std::string Difference::oldName(const Change& change) const {
    return change.subject == Subject::layout ? layout_[change.detail].oldDiagram.qualifiedName
           : change.oldId != noElement       ? qualifiedName(old_, change.oldId)
                                             : "";
}

std::string Difference::newName(const Change& change) const {
    return change.subject == Subject::layout ? layout_[change.detail].newDiagram.qualifiedName
           : change.newId != noElement       ? qualifiedName(new_, change.newId)
                                             : "";
}

std::string Difference::nameOf(const Change& change) const {
    return change.subject == Subject::layout || change.newId != noElement ? newName(change) : oldName(change);
}

std::optional<Evidence> Difference::evidenceOf(const Change& change) const {
    if (change.subject == Subject::layout) {
        return layout_[change.detail].evidence;
    }
    return change.oldId != noElement && change.newId != noElement ? std::optional(matching_.evidence[change.oldId])
                                                                  : std::nullopt;
}

std::optional<Verb> verbOf(const Change& change) {
    switch (change.subject) {
    case Subject::existence:
        return change.oldId == noElement ? Verb::added : Verb::removed;
    case Subject::name:
        return Verb::renamed;
    case Subject::owner:
        return Verb::moved;
    default:
        return std::nullopt;
    }
}

void Summary::add(const Change& change) {
    const std::optional<Verb> verb = verbOf(change);
    const std::array<std::uint64_t*, 4> counts{&added, &removed, &renamed, &moved};
    ++(verb ? *counts[static_cast<std::size_t>(*verb)] : changed);
    ++byWeight[static_cast<std::size_t>(ruleOf(change.rule).weight)];
}

Summary summaryOf(const Difference& difference) {
    Summary summary;
    for (const Change& change : difference.changes()) {
        summary.add(change);
    }
    return summary;
}

} // namespace diff
