#include "diff/rules.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

namespace diff {

namespace {

constexpr std::array<std::string_view, 3> weights{"breaking", "compatible", "information"};
constexpr std::array<std::string_view, 4> verbs{"added", "removed", "renamed", "moved"};

// A removal, another type and less room than before are breaking: programs, data and texts that were made for the old
// model may not fit the new one. More room is compatible. Names count where programs use them. What is written for
// people, and how the model is kept and shown, is information.
constexpr std::array table{
    Rule{"package-added", Weight::compatible, "package-removed", "a package is new"},
    Rule{"package-removed", Weight::breaking, "package-added", "a package is gone"},
    Rule{"package-renamed", Weight::breaking, "package-renamed", "a package has another name"},
    Rule{"package-moved", Weight::information, "package-moved", "a package has another owner"},
    Rule{"class-added", Weight::compatible, "class-removed", "a class is new"},
    Rule{"class-removed", Weight::breaking, "class-added", "a class is gone"},
    Rule{"class-renamed", Weight::breaking, "class-renamed", "a class has another name"},
    Rule{"class-moved", Weight::information, "class-moved", "a class has another owner"},
    Rule{"attribute-added", Weight::compatible, "attribute-removed", "an attribute is new"},
    Rule{"attribute-removed", Weight::breaking, "attribute-added", "an attribute is gone"},
    Rule{"attribute-renamed", Weight::breaking, "attribute-renamed", "an attribute has another name"},
    Rule{"attribute-moved", Weight::breaking, "attribute-moved", "an attribute has another owner"},
    Rule{"operation-added", Weight::compatible, "operation-removed", "an operation is new"},
    Rule{"operation-removed", Weight::breaking, "operation-added", "an operation is gone"},
    Rule{"operation-renamed", Weight::breaking, "operation-renamed", "an operation has another name"},
    Rule{"operation-moved", Weight::breaking, "operation-moved", "an operation has another owner"},
    Rule{"argument-added", Weight::breaking, "argument-removed", "an argument is new"},
    Rule{"argument-removed", Weight::breaking, "argument-added", "an argument is gone"},
    Rule{"argument-renamed", Weight::compatible, "argument-renamed", "an argument has another name"},
    Rule{"argument-moved", Weight::breaking, "argument-moved", "an argument has another owner"},
    Rule{"key-added", Weight::compatible, "key-removed", "a key is new"},
    Rule{"key-removed", Weight::breaking, "key-added", "a key is gone"},
    Rule{"key-renamed", Weight::compatible, "key-renamed", "a key has another name"},
    Rule{"key-moved", Weight::breaking, "key-moved", "a key has another owner"},
    Rule{"association-added", Weight::compatible, "association-removed", "an association is new"},
    Rule{"association-removed", Weight::breaking, "association-added", "an association is gone"},
    Rule{"association-renamed", Weight::compatible, "association-renamed", "an association has another name"},
    Rule{"association-moved", Weight::information, "association-moved", "an association has another owner"},
    Rule{"role-added", Weight::compatible, "role-removed", "a role is new"},
    Rule{"role-removed", Weight::breaking, "role-added", "a role is gone"},
    Rule{"role-renamed", Weight::breaking, "role-renamed", "a role has another name"},
    Rule{"role-moved", Weight::breaking, "role-moved", "a role has another owner"},
    Rule{"generalization-added", Weight::compatible, "generalization-removed", "a generalization is new"},
    Rule{"generalization-removed", Weight::breaking, "generalization-added", "a generalization is gone"},
    Rule{"generalization-renamed", Weight::information, "generalization-renamed", "a generalization has another name"},
    Rule{"generalization-moved", Weight::information, "generalization-moved", "a generalization has another owner"},
    Rule{"realization-added", Weight::compatible, "realization-removed", "a realization is new"},
    Rule{"realization-removed", Weight::breaking, "realization-added", "a realization is gone"},
    Rule{"realization-renamed", Weight::information, "realization-renamed", "a realization has another name"},
    Rule{"realization-moved", Weight::information, "realization-moved", "a realization has another owner"},
    Rule{"dependency-added", Weight::compatible, "dependency-removed", "a dependency is new"},
    Rule{"dependency-removed", Weight::breaking, "dependency-added", "a dependency is gone"},
    Rule{"dependency-renamed", Weight::information, "dependency-renamed", "a dependency has another name"},
    Rule{"dependency-moved", Weight::information, "dependency-moved", "a dependency has another owner"},
    Rule{"diagram-added", Weight::information, "diagram-removed", "a diagram is new"},
    Rule{"diagram-removed", Weight::breaking, "diagram-added", "a diagram is gone"},
    Rule{"diagram-renamed", Weight::information, "diagram-renamed", "a diagram has another name"},
    Rule{"diagram-moved", Weight::information, "diagram-moved", "a diagram has another owner"},
    Rule{"type-added", Weight::information, "type-removed", "a type is new"},
    Rule{"type-removed", Weight::breaking, "type-added", "a type is gone"},
    Rule{"type-renamed", Weight::information, "type-renamed", "a type has another name"},
    Rule{"type-moved", Weight::information, "type-moved", "a type has another owner"},
    Rule{"documentation-changed", Weight::information, "documentation-changed", "the documentation differs"},
    Rule{"notes-changed", Weight::information, "notes-changed", "the notes on diagrams differ"},
    Rule{"stereotype-changed", Weight::breaking, "stereotype-changed",
         "the stereotype differs, and with it what a class or package is"},
    Rule{"category-changed", Weight::breaking, "category-changed", "the category of a class differs"},
    Rule{"abstract-changed", Weight::breaking, "abstract-changed", "a class became abstract, or is no longer"},
    Rule{"persistence-changed", Weight::breaking, "persistence-changed", "a class became persistent, or is no longer"},
    Rule{"space-changed", Weight::information, "space-changed", "the space of a class differs"},
    Rule{"multiplicity-narrowed", Weight::breaking, "multiplicity-widened", "fewer numbers of objects are allowed"},
    Rule{"multiplicity-widened", Weight::compatible, "multiplicity-narrowed", "more numbers of objects are allowed"},
    Rule{"multiplicity-changed", Weight::breaking, "multiplicity-changed",
         "the multiplicity differs, and neither allows all that the other one allows"},
    Rule{"multiplicity-respelled", Weight::information, "multiplicity-respelled",
         "the multiplicity is written in another way and allows the same"},
    Rule{"concurrency-changed", Weight::compatible, "concurrency-changed",
         "the concurrency of a class or operation differs"},
    Rule{"attribute-type-changed", Weight::breaking, "attribute-type-changed", "an attribute has another type"},
    Rule{"argument-type-changed", Weight::breaking, "argument-type-changed", "an argument has another type"},
    Rule{"return-type-changed", Weight::breaking, "return-type-changed", "an operation returns another type"},
    Rule{"argument-order-changed", Weight::breaking, "argument-order-changed", "the arguments stand in another order"},
    Rule{"visibility-narrowed", Weight::breaking, "visibility-widened", "fewer may use the element"},
    Rule{"visibility-widened", Weight::compatible, "visibility-narrowed", "more may use the element"},
    Rule{"visibility-changed", Weight::breaking, "visibility-changed", "the visibility was or is not known"},
    Rule{"containment-changed", Weight::breaking, "containment-changed",
         "by value became by reference, or the other way round"},
    Rule{"static-changed", Weight::breaking, "static-changed", "the element became static, or is no longer"},
    Rule{"derived-changed", Weight::breaking, "derived-changed", "an attribute became derived, or is no longer"},
    Rule{"virtual-changed", Weight::breaking, "virtual-changed",
         "an operation or generalization became virtual, or is no longer"},
    Rule{"friend-changed", Weight::breaking, "friend-changed", "the element became a friend, or is no longer"},
    Rule{"navigability-narrowed", Weight::breaking, "navigability-widened",
         "an end can no longer be reached from the other one"},
    Rule{"navigability-widened", Weight::compatible, "navigability-narrowed",
         "an end can be reached from the other one"},
    Rule{"aggregation-changed", Weight::breaking, "aggregation-changed", "the whole of an association differs"},
    Rule{"source-changed", Weight::information, "source-changed", "another end is the source of an association"},
    Rule{"initial-value-changed", Weight::compatible, "initial-value-changed", "the initial value differs"},
    Rule{"semantics-changed", Weight::information, "semantics-changed", "the semantics of an operation differ"},
    Rule{"precondition-changed", Weight::breaking, "precondition-changed", "the precondition of an operation differs"},
    Rule{"postcondition-changed", Weight::breaking, "postcondition-changed",
         "the postcondition of an operation differs"},
    Rule{"role-class-changed", Weight::breaking, "role-class-changed", "an end is at another class"},
    Rule{"generalization-subtypes-changed", Weight::breaking, "generalization-subtypes-changed",
         "other classes are the subtypes"},
    Rule{"generalization-supertypes-changed", Weight::breaking, "generalization-supertypes-changed",
         "other classes are the supertypes"},
    Rule{"realization-class-changed", Weight::breaking, "realization-class-changed", "another class realizes"},
    Rule{"realization-specification-changed", Weight::breaking, "realization-specification-changed",
         "another class is realized"},
    Rule{"dependency-client-changed", Weight::breaking, "dependency-client-changed", "another class depends"},
    Rule{"dependency-supplier-changed", Weight::breaking, "dependency-supplier-changed",
         "another class is depended on"},
    Rule{"role-keys-changed", Weight::breaking, "role-keys-changed", "other foreign keys stand for an end"},
    Rule{"key-kind-changed", Weight::breaking, "key-kind-changed",
         "a candidate key became a foreign key, or the other way round"},
    Rule{"primary-key-changed", Weight::breaking, "primary-key-changed",
         "a key became the primary key, or is no longer"},
    Rule{"key-target-changed", Weight::breaking, "key-target-changed", "a foreign key refers to another key"},
    Rule{"key-attributes-changed", Weight::breaking, "key-attributes-changed", "other attributes are in a key"},
    Rule{"key-mapping-changed", Weight::breaking, "key-mapping-changed",
         "a foreign key maps its attributes in another way"},
    Rule{"diagram-contents-changed", Weight::information, "diagram-contents-changed", "a diagram shows other elements"},
    Rule{"type-kind-changed", Weight::information, "type-kind-changed",
         "a base type became a derived type, or the other way round"},
    Rule{"data-type-changed", Weight::breaking, "data-type-changed", "a type has another data type"},
    Rule{"length-narrowed", Weight::breaking, "length-widened", "a type is shorter"},
    Rule{"length-widened", Weight::compatible, "length-narrowed", "a type is longer"},
    Rule{"scale-narrowed", Weight::breaking, "scale-widened", "a type has fewer decimals"},
    Rule{"scale-widened", Weight::compatible, "scale-narrowed", "a type has more decimals"},
    Rule{"user-defined-changed", Weight::information, "user-defined-changed",
         "a type or key became defined by the model, or is no longer"},
    Rule{"physical-name-changed", Weight::information, "physical-name-changed",
         "a type is called differently in the target system"},
    Rule{"type-base-changed", Weight::breaking, "type-base-changed", "a type is derived from another one"},
    Rule{"type-values-changed", Weight::breaking, "type-values-changed", "the values of a type differ"},
    Rule{"origin-changed", Weight::information, "origin-changed", "the model was made by another tool or version"},
    Rule{"order-changed", Weight::information, "order-changed",
         "the elements of an owner stand in another order; with --show order"},
    Rule{"layout-changed", Weight::information, "layout-changed", "a diagram is drawn differently; with --show layout"},
    Rule{"quid-changed", Weight::information, "quid-changed", "the element has another quid; with --show quids"},
    Rule{"encoding-changed", Weight::information, "encoding-changed",
         "the file is in another encoding; with --show encoding"},
    Rule{"unit-changed", Weight::information, "unit-changed", "the element is kept in another file; with --show units"},
};

/// A type, which is a field of attributes and of arguments, has a rule for each.
constexpr std::array fieldRules{
    FieldRule{FieldId::description, "documentation-changed"},
    FieldRule{FieldId::notes, "notes-changed"},
    FieldRule{FieldId::stereotype, "stereotype-changed"},
    FieldRule{FieldId::category, "category-changed"},
    FieldRule{FieldId::isAbstract, "abstract-changed"},
    FieldRule{FieldId::isPersistent, "persistence-changed"},
    FieldRule{FieldId::space, "space-changed"},
    FieldRule{FieldId::multiplicity, "multiplicity", Comparison::multiplicity},
    FieldRule{FieldId::concurrency, "concurrency-changed"},
    FieldRule{FieldId::type, "attribute-type-changed"},
    FieldRule{FieldId::returnType, "return-type-changed"},
    FieldRule{FieldId::visibility, "visibility", Comparison::visibility},
    FieldRule{FieldId::containment, "containment-changed"},
    FieldRule{FieldId::isStatic, "static-changed"},
    FieldRule{FieldId::isDerived, "derived-changed"},
    FieldRule{FieldId::isVirtual, "virtual-changed"},
    FieldRule{FieldId::isFriend, "friend-changed"},
    FieldRule{FieldId::isNavigable, "navigability", Comparison::navigability},
    FieldRule{FieldId::isAggregate, "aggregation-changed"},
    FieldRule{FieldId::isAggregation, "aggregation-changed"},
    FieldRule{FieldId::isSource, "source-changed"},
    FieldRule{FieldId::initialValue, "initial-value-changed"},
    FieldRule{FieldId::semantics, "semantics-changed"},
    FieldRule{FieldId::precondition, "precondition-changed"},
    FieldRule{FieldId::postcondition, "postcondition-changed"},
    FieldRule{FieldId::classOfRole, "role-class-changed"},
    FieldRule{FieldId::subtypes, "generalization-subtypes-changed"},
    FieldRule{FieldId::supertypes, "generalization-supertypes-changed"},
    FieldRule{FieldId::realizationClass, "realization-class-changed"},
    FieldRule{FieldId::specificationClass, "realization-specification-changed"},
    FieldRule{FieldId::client, "dependency-client-changed"},
    FieldRule{FieldId::supplier, "dependency-supplier-changed"},
    FieldRule{FieldId::foreignKeys, "role-keys-changed"},
    FieldRule{FieldId::keyKind, "key-kind-changed"},
    FieldRule{FieldId::isPrimary, "primary-key-changed"},
    FieldRule{FieldId::candidateKey, "key-target-changed"},
    FieldRule{FieldId::keyAttributes, "key-attributes-changed"},
    FieldRule{FieldId::roleNameMaps, "key-mapping-changed"},
    FieldRule{FieldId::diagramElements, "diagram-contents-changed"},
    FieldRule{FieldId::typeKind, "type-kind-changed"},
    FieldRule{FieldId::dataType, "data-type-changed"},
    FieldRule{FieldId::length, "length", Comparison::size},
    FieldRule{FieldId::scale, "scale", Comparison::size},
    FieldRule{FieldId::userDefined, "user-defined-changed"},
    FieldRule{FieldId::physicalName, "physical-name-changed"},
    FieldRule{FieldId::derivedFrom, "type-base-changed"},
    FieldRule{FieldId::values, "type-values-changed"},
    FieldRule{FieldId::origins, "origin-changed"},
};

} // namespace

std::string_view weightWord(Weight weight) {
    return weights[static_cast<std::size_t>(weight)];
}

std::span<const Rule> rules() {
    return table;
}

std::optional<RuleId> findRule(std::string_view name) {
    const auto* found = std::ranges::find(table, name, &Rule::name);
    return found != table.end() ? std::optional(static_cast<RuleId>(found - table.begin())) : std::nullopt;
}

RuleId ruleNamed(std::string_view name) {
    const std::optional<RuleId> rule = findRule(name);
    if (!rule) {
        throw std::logic_error("no rule '" + std::string(name) + "'");
    }
    return *rule;
}

RuleId ruleFor(Kind kind, Verb verb) {
    static const auto byKind = [] {
        std::array<std::array<RuleId, verbs.size()>, kindCount> made{};
        for (std::size_t row = 1; row < kindCount; ++row) {
            for (std::size_t column = 0; column < verbs.size(); ++column) {
                made[row][column] =
                    ruleNamed(std::string(kindWord(static_cast<Kind>(row))).append("-").append(verbs[column]));
            }
        }
        return made;
    }();
    return byKind[static_cast<std::size_t>(kind)][static_cast<std::size_t>(verb)];
}

const FieldRule* fieldRule(FieldId field) {
    const auto* found = std::ranges::find(fieldRules, field, &FieldRule::field);
    return found != fieldRules.end() ? found : nullptr;
}

} // namespace diff
