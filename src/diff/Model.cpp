#include "diff/Model.h"

#include "export/NameIds.h"

#include <algorithm>

namespace diff {

namespace {

constexpr std::array<std::string_view, kindCount> kindWords{
    "model",       "package", "class",          "attribute",   "operation",  "argument", "key",
    "association", "role",    "generalization", "realization", "dependency", "diagram",  "type"};

/// In the order of `Kind`.
constexpr std::array<std::string_view, kindCount> listNames{
    "elements", "packages", "elements", "attributes", "operations", "arguments", "keys",
    "elements", "roles",    "elements", "elements",   "elements",   "diagrams",  "types"};

struct FieldRow {
    FieldId id;
    ValueForm form;
    std::string_view member;
};

/// In the order of `FieldId`.
constexpr std::array fieldRows{
    FieldRow{FieldId::description, ValueForm::text, "description"},
    FieldRow{FieldId::notes, ValueForm::texts, "notes"},
    FieldRow{FieldId::stereotype, ValueForm::text, "stereotype"},
    FieldRow{FieldId::category, ValueForm::text, "category"},
    FieldRow{FieldId::isAbstract, ValueForm::flag, "isAbstract"},
    FieldRow{FieldId::isPersistent, ValueForm::flag, "isPersistent"},
    FieldRow{FieldId::space, ValueForm::number, "space"},
    FieldRow{FieldId::multiplicity, ValueForm::text, "multiplicity"},
    FieldRow{FieldId::concurrency, ValueForm::number, "concurrency"},
    FieldRow{FieldId::type, ValueForm::reference, "type"},
    FieldRow{FieldId::returnType, ValueForm::reference, "returnType"},
    FieldRow{FieldId::visibility, ValueForm::text, "visibility"},
    FieldRow{FieldId::containment, ValueForm::text, "containment"},
    FieldRow{FieldId::isStatic, ValueForm::flag, "isStatic"},
    FieldRow{FieldId::isDerived, ValueForm::flag, "isDerived"},
    FieldRow{FieldId::isVirtual, ValueForm::flag, "isVirtual"},
    FieldRow{FieldId::isFriend, ValueForm::flag, "isFriend"},
    FieldRow{FieldId::isNavigable, ValueForm::flag, "isNavigable"},
    FieldRow{FieldId::isAggregate, ValueForm::flag, "isAggregate"},
    FieldRow{FieldId::isAggregation, ValueForm::flag, "isAggregation"},
    FieldRow{FieldId::isSource, ValueForm::flag, "isSource"},
    FieldRow{FieldId::position, ValueForm::number, "position"},
    FieldRow{FieldId::initialValue, ValueForm::text, "initialValue"},
    FieldRow{FieldId::semantics, ValueForm::text, "semantics"},
    FieldRow{FieldId::precondition, ValueForm::text, "precondition"},
    FieldRow{FieldId::postcondition, ValueForm::text, "postcondition"},
    FieldRow{FieldId::classOfRole, ValueForm::reference, "class"},
    FieldRow{FieldId::subtypes, ValueForm::references, "subtypes"},
    FieldRow{FieldId::supertypes, ValueForm::references, "supertypes"},
    FieldRow{FieldId::realizationClass, ValueForm::reference, "realizationClass"},
    FieldRow{FieldId::specificationClass, ValueForm::reference, "specificationClass"},
    FieldRow{FieldId::client, ValueForm::reference, "client"},
    FieldRow{FieldId::supplier, ValueForm::reference, "supplier"},
    FieldRow{FieldId::foreignKeys, ValueForm::references, "foreignKeys"},
    FieldRow{FieldId::keyKind, ValueForm::text, "kind"},
    FieldRow{FieldId::isPrimary, ValueForm::flag, "isPrimary"},
    FieldRow{FieldId::candidateKey, ValueForm::reference, "candidateKey"},
    FieldRow{FieldId::keyAttributes, ValueForm::references, "attributes"},
    FieldRow{FieldId::roleNameMaps, ValueForm::records, "roleNameMaps"},
    FieldRow{FieldId::diagramElements, ValueForm::references, "elements"},
    FieldRow{FieldId::typeKind, ValueForm::text, "kind"},
    FieldRow{FieldId::dataType, ValueForm::text, "dataType"},
    FieldRow{FieldId::length, ValueForm::number, "length"},
    FieldRow{FieldId::scale, ValueForm::number, "scale"},
    FieldRow{FieldId::userDefined, ValueForm::flag, "userDefined"},
    FieldRow{FieldId::physicalName, ValueForm::text, "physicalName"},
    FieldRow{FieldId::derivedFrom, ValueForm::reference, "derivedFrom"},
    FieldRow{FieldId::values, ValueForm::records, "values"},
    FieldRow{FieldId::origins, ValueForm::records, "origins"},
    FieldRow{FieldId::recordName, ValueForm::text, "name"},
    FieldRow{FieldId::recordValue, ValueForm::text, "value"},
    FieldRow{FieldId::mapSource, ValueForm::reference, "source"},
    FieldRow{FieldId::mapDestination, ValueForm::reference, "destination"},
    FieldRow{FieldId::sourceEncoding, ValueForm::text, "sourceEncoding"},
    FieldRow{FieldId::sourceFormat, ValueForm::text, "sourceFormat"},
    FieldRow{FieldId::sourcePath, ValueForm::text, "sourcePath"},
    FieldRow{FieldId::sourceKind, ValueForm::text, "sourceKind"},
    FieldRow{FieldId::toolVendor, ValueForm::text, "vendor"},
    FieldRow{FieldId::toolName, ValueForm::text, "tool"}, // its "name"
    FieldRow{FieldId::toolVersions, ValueForm::text, "versions"},
    FieldRow{FieldId::toolWeb, ValueForm::text, "web"},
    FieldRow{FieldId::methodology, ValueForm::text, "methodology"},
    FieldRow{FieldId::bridgeId, ValueForm::text, "bridgeId"},
};
static_assert(fieldRows.size() == fieldCount);
static_assert(std::ranges::is_sorted(fieldRows, {}, &FieldRow::id) && fieldRows.back().id == FieldId::bridgeId);

} // namespace

std::string_view kindWord(Kind kind) {
    return kindWords.at(static_cast<std::size_t>(kind));
}

std::string_view listName(Kind kind) {
    return listNames.at(static_cast<std::size_t>(kind));
}

ValueForm formOf(FieldId field) {
    return fieldRows[static_cast<std::size_t>(field)].form;
}

std::string_view memberName(FieldId field) {
    return fieldRows[static_cast<std::size_t>(field)].member;
}

Model::Model() {
    elements_.emplace_back().end = 1;
}

const Field* Model::find(ElementId id, FieldId field) const {
    const std::span<const Field> fields = fieldsOf(id);
    const auto found = std::ranges::lower_bound(fields, field, {}, &Field::id);
    return found != fields.end() && found->id == field ? &*found : nullptr;
}

std::string qualifiedName(const Model& model, ElementId id) {
    std::vector<ElementId> path{id};
    for (ElementId owner = model[id].owner; owner != noElement && owner != 0; owner = model[owner].owner) {
        path.push_back(owner);
    }
    std::string name;
    for (auto element = path.rbegin(); element != path.rend(); ++element) {
        name.append(element != path.rbegin() ? "::" : "").append(model[*element].name);
    }
    return name;
}

OwnQuids::OwnQuids(const Model& model)
    : isOwn_(model.elements().size()), first_(2 * isOwn_.size(), QuidHash{&model}, SameQuid{&model}) {
    for (ElementId id = 0; id < isOwn_.size(); ++id) {
        if (exporter::mayBeId(model[id].quid)) {
            const auto [first, isNew] = first_.insert(id);
            isOwn_[id] = isNew;
            isOwn_[*first] = isNew;
        }
    }
}

ElementId OwnQuids::find(std::string_view quid) const {
    const auto found = first_.find(quid);
    return found != first_.end() && isOwn_[*found] ? *found : noElement;
}

LastingIds::LastingIds(const Model& model) : model_(model), hashes_(model.elements().size()) {
    const OwnQuids hasQuid(model);
    exporter::NameIds names({kindWords.begin(), kindWords.end()});
    std::vector<ElementId> owners; // those entered
    for (ElementId id = 0; id < hashes_.size(); ++id) {
        while (!owners.empty() && model[owners.back()].end <= id) {
            owners.pop_back();
        }
        names.leaveTo(owners.size());
        if (!hasQuid[id]) {
            hashes_[id] = names.take(static_cast<std::size_t>(model[id].kind), model[id].name);
        }
        if (id != 0) {
            names.enter(model[id].name);
            owners.push_back(id);
        }
    }
}

std::string LastingIds::idOf(ElementId id) const {
    return hashes_[id] == 0 ? exporter::idOfQuid(model_[id].quid) : exporter::idOfName(hashes_[id]);
}

} // namespace diff
