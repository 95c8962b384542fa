#include "diff/findChanges.h"

#include "export/relationships.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace diff {

namespace {

/// The words of visibility, from the one that most may use.
constexpr std::array<std::string_view, 4> visibilities{"public", "protected", "private", "implementation"};

/// Finds what differs in elements that are a pair.
class Comparer {
public:
    Comparer(const Model& oldModel, const Model& newModel, const Matching& matching, const Shown& shown)
        : old_(oldModel), new_(newModel), matching_(matching), shown_(shown) {}

    std::vector<Change> compare() {
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
        return std::move(changes_);
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
        if (shown_.encoding && oldId == 0 && encodingsOf(old_) != encodingsOf(new_)) {
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

    const Model& old_;
    const Model& new_;
    const Matching& matching_;
    const Shown& shown_;
    std::vector<Change> changes_;
};

} // namespace

std::vector<Change> findChanges(const Model& oldModel, const Model& newModel, const Matching& matching,
                                const Shown& shown) {
    return Comparer(oldModel, newModel, matching, shown).compare();
}

std::vector<std::string_view> encodingsOf(const Model& model) {
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

} // namespace diff
