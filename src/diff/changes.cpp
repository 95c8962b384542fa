#include "diff/changes.h"

#include "diff/ChangeTree.h"
#include "diff/findChanges.h"
#include "diff/labels.h"

#include <algorithm>
#include <array>
#include <utility>

namespace diff {

namespace {

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

    [[nodiscard]] Value encoding() const {
        const std::vector<std::string_view> found = encodingsOf(model_);
        return found.empty() ? std::string() : std::string(found.front());
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
    changes_ = inTreeOrder(*this, findChanges(old_, new_, matching_, shown));
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
        return {olds.encoding(), news.encoding()};
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
