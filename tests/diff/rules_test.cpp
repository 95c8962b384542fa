// Each field of a model's document, changed by itself: the rule, the values and the label of the line that tells of it.

#include "diff/changes.h"
#include "diff/rules.h"
#include "diff/writers.h"
#include "text/Output.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>
#include <vector>

namespace {

constexpr std::string_view document = R"({"format": "petal-model", "formatVersion": 1, "model": {"id": 1, "name": "m",
"origins": [{"sourceEncoding": "latin1", "tool": {"vendor": "v", "name": "t"}}],
"types": [
 {"id": 2, "kind": "base", "name": "int", "dataType": "INTEGER", "length": 4, "scale": 2, "physicalName": "INT4"},
 {"id": 3, "kind": "derived", "name": "money", "derivedFrom": 2, "userDefined": true,
  "values": [{"name": "low", "value": "1", "position": 0}]},
 {"id": 4, "kind": "derived", "name": "text", "dataType": "VARCHAR"}],
"packages": [{"id": 5, "name": "P", "stereotype": "layer", "notes": ["one", "two"], "elements": [
 {"id": 6, "kind": "class", "name": "Order", "category": "class", "description": "of goods", "isAbstract": true,
  "space": 3, "multiplicity": "0..1", "concurrency": 1, "arguments": [{"id": 7, "name": "T", "position": 0}],
  "attributes": [
   {"id": 8, "name": "number", "type": 2, "visibility": "protected", "containment": "byValue", "position": 0},
   {"id": 9, "name": "total", "type": 3, "visibility": "public", "isStatic": true, "position": 1,
    "initialValue": "0"}],
  "operations": [
   {"id": 10, "name": "pay", "visibility": "private", "isVirtual": true, "semantics": "pays", "precondition": "open",
    "postcondition": "paid", "returnType": 2, "arguments": [
     {"id": 11, "name": "sum", "type": 3, "position": 0}, {"id": 12, "name": "day", "type": 4, "position": 1}]}],
  "keys": [{"id": 13, "kind": "candidate", "name": "k", "isPrimary": true, "attributes": [8]},
           {"id": 14, "kind": "candidate", "name": "other", "attributes": [9]}]},
 {"id": 15, "kind": "class", "name": "Line", "category": "class", "isPersistent": true, "attributes": [
   {"id": 16, "name": "order", "type": 2, "visibility": "public", "position": 0},
   {"id": 17, "name": "spare", "type": 2, "visibility": "public", "isDerived": true, "position": 1}],
  "keys": [{"id": 18, "kind": "foreign", "name": "f", "candidateKey": 13, "attributes": [16],
            "roleNameMaps": [{"name": "map", "source": 8, "destination": 16}]}]},
 {"id": 19, "kind": "association", "name": "has", "isAggregation": true, "roles": [
   {"id": 20, "name": "order", "class": 6, "multiplicity": "1", "isAggregate": true, "isNavigable": true},
   {"id": 21, "name": "lines", "class": 15, "multiplicity": "0..n", "isFriend": true, "isSource": true,
    "foreignKeys": [18]}]},
 {"id": 22, "kind": "generalization", "name": "g", "visibility": "public", "subtypes": [15], "supertypes": [6]},
 {"id": 23, "kind": "realization", "name": "r", "realizationClass": 15, "specificationClass": 6},
 {"id": 24, "kind": "dependency", "name": "d", "client": 6, "supplier": 15}],
 "diagrams": [{"id": 25, "name": "Main", "elements": [6, 15]}]}]}})";

struct Row {
    const char* from; ///< stands in the document once
    const char* to;
    const char* subject; ///< of the line, with the field
    const char* values;
    const char* rule;
    const char* subjectBack = nullptr; ///< if the label has a value that changes
};

const std::vector<Row> rows{
    {R"("latin1")", R"("utf-8")", nullptr, nullptr, nullptr},
    {R"("name": "t")", R"("name": "u")", "model: origins", "vendor v tool t → vendor v tool u", "origin-changed"},
    {R"("INTEGER")", R"("BIGINT")", "type int (base): dataType", "INTEGER → BIGINT", "data-type-changed"},
    {R"("base")", R"("derived")", "type int (derived): kind", "base → derived", "type-kind-changed",
     "type int (base): kind"},
    {R"("length": 4)", R"("length": 8)", "type int (base): length", "4 → 8", "length-widened"},
    {R"("scale": 2, )", "", "type int (base): scale", "2 → 0", "scale-narrowed"},
    {R"("INT4")", R"("")", "type int (base): physicalName", "INT4 → (none)", "physical-name-changed"},
    {R"("derivedFrom": 2)", R"("derivedFrom": 4)", "type money (derived): derivedFrom", "int → text",
     "type-base-changed"},
    {R"("userDefined": true)", R"("userDefined": false)", "type money (derived): userDefined", "yes → no",
     "user-defined-changed"},
    {R"("value": "1")", R"("value": "2")", "type money (derived): values", "low value 1 → low value 2",
     "type-values-changed"},
    {R"("layer")", R"("core")", "package P: stereotype", "layer → core", "stereotype-changed"},
    {R"("one", "two")", R"("two", "one")", nullptr, nullptr, nullptr},
    {R"("one", "two")", R"("two", "")", "package P: notes", "one, two → two, ", "notes-changed"},
    {R"("Order", "category": "class")", R"("Order", "category": "metaclass")", "class Order: category",
     "class → metaclass", "category-changed"},
    {R"("of goods")", R"("of all")", "class Order: description", "of goods → of all", "documentation-changed"},
    {R"("isAbstract": true)", R"("isAbstract": false)", "class Order: isAbstract", "yes → no", "abstract-changed"},
    {R"("isPersistent": true, )", "", "class Line: isPersistent", "yes → no", "persistence-changed"},
    {R"("space": 3)", R"("space": 4)", "class Order: space", "3 → 4", "space-changed"},
    {R"("multiplicity": "0..1")", R"("multiplicity": "1")", "class Order: multiplicity", "0..1 → 1",
     "multiplicity-narrowed"},
    {R"("multiplicity": "1", )", R"("multiplicity": "1..1", )", "role order: Order: multiplicity", "1 → 1..1",
     "multiplicity-respelled"},
    {R"("multiplicity": "0..1")", R"("multiplicity": "1..2")", "class Order: multiplicity", "0..1 → 1..2",
     "multiplicity-changed"},
    {R"("concurrency": 1)", R"("concurrency": 2)", "class Order: concurrency", "1 → 2", "concurrency-changed"},
    {R"("name": "number", "type": 2)", R"("name": "number", "type": 4)", "attribute number: type", "int → text",
     "attribute-type-changed"},
    {R"("protected")", R"("private")", "attribute number: visibility", "protected → private", "visibility-narrowed"},
    {R"("protected")", R"("public")", "attribute number: visibility", "protected → public", "visibility-widened"},
    {R"("protected")", R"("guarded")", "attribute number: visibility", "protected → guarded", "visibility-changed"},
    {R"("byValue")", R"("byReference")", "attribute number: containment", "byValue → byReference",
     "containment-changed"},
    {R"("isStatic": true, )", "", "attribute total: isStatic", "yes → no", "static-changed"},
    {R"("isDerived": true, )", "", "attribute spare: isDerived", "yes → no", "derived-changed"},
    {R"("initialValue": "0")", R"("initialValue": "")", "attribute total: initialValue", "0 → (none)",
     "initial-value-changed"},
    {R"("isVirtual": true, )", "", "operation pay(sum: money, day: text): int: isVirtual", "yes → no",
     "virtual-changed"},
    {R"("pays")", R"("a\nb")", "operation pay(sum: money, day: text): int: semantics", R"(pays → a\nb)",
     "semantics-changed"},
    {R"("open")", R"("due")", "operation pay(sum: money, day: text): int: precondition", "open → due",
     "precondition-changed"},
    {R"("paid")", R"("done")", "operation pay(sum: money, day: text): int: postcondition", "paid → done",
     "postcondition-changed"},
    {R"({"id": 11, "name": "sum", "type": 3, "position": 0}, {"id": 12, "name": "day", "type": 4, "position": 1})",
     R"({"id": 12, "name": "day", "type": 4, "position": 0}, {"id": 11, "name": "sum", "type": 3, "position": 1})",
     "operation pay(day: text, sum: money): int: arguments", "sum, day → day, sum", "argument-order-changed",
     "operation pay(sum: money, day: text): int: arguments"},
    {R"("returnType": 2)", R"("returnType": 3)", "operation pay(sum: money, day: text): money: returnType",
     "int → money", "return-type-changed", "operation pay(sum: money, day: text): int: returnType"},
    {R"("name": "sum", "type": 3)", R"("name": "sum", "type": 2)", "argument sum: type", "money → int",
     "argument-type-changed"},
    {R"("isPrimary": true, )", "", "key k: isPrimary", "yes → no", "primary-key-changed"},
    {R"("attributes": [8])", R"("attributes": [8, 9])", "key k: attributes",
     "P::Order::number → P::Order::number, P::Order::total", "key-attributes-changed"},
    {R"("kind": "candidate", "name": "other")", R"("kind": "foreign", "name": "other")", "key other: kind",
     "candidate → foreign", "key-kind-changed"},
    {R"("candidateKey": 13)", R"("candidateKey": 14)", "key f: candidateKey", "P::Order::k → P::Order::other",
     "key-target-changed"},
    {R"("source": 8)", R"("source": 9)", "key f: roleNameMaps",
     "map source P::Order::number destination P::Line::order → map source P::Order::total "
     "destination P::Line::order",
     "key-mapping-changed"},
    {R"("isAggregation": true, )", "", "association has (order: Order — lines: Line): isAggregation", "yes → no",
     "aggregation-changed"},
    {R"("isAggregate": true, )", "", "role order: Order: isAggregate", "yes → no", "aggregation-changed"},
    {R"("class": 6)", R"("class": 15)", "role order: Line: class", "P::Order → P::Line", "role-class-changed",
     "role order: Order: class"},
    {R"(, "isNavigable": true)", "", "role order: Order: isNavigable", "yes → no", "navigability-narrowed"},
    {R"("0..n")", R"("1..n")", "role lines: Line: multiplicity", "0..n → 1..n", "multiplicity-narrowed"},
    {R"("isFriend": true, )", "", "role lines: Line: isFriend", "yes → no", "friend-changed"},
    {R"("isSource": true,)", "", "role lines: Line: isSource", "yes → no", "source-changed"},
    {R"("foreignKeys": [18])", R"("foreignKeys": [])", "role lines: Line: foreignKeys", "P::Line::f → (none)",
     "role-keys-changed"},
    {R"("subtypes": [15])", R"("subtypes": [6])", "generalization g Order → Order: subtypes", "P::Line → P::Order",
     "generalization-subtypes-changed", "generalization g Line → Order: subtypes"},
    {R"("supertypes": [6])", R"("supertypes": [6, 15])", "generalization g Line → Order, Line: supertypes",
     "P::Order → P::Order, P::Line", "generalization-supertypes-changed", "generalization g Line → Order: supertypes"},
    {R"("realizationClass": 15)", R"("realizationClass": 6)", "realization r Order → Order: realizationClass",
     "P::Line → P::Order", "realization-class-changed", "realization r Line → Order: realizationClass"},
    {R"("specificationClass": 6)", R"("specificationClass": 15)", "realization r Line → Line: specificationClass",
     "P::Order → P::Line", "realization-specification-changed", "realization r Line → Order: specificationClass"},
    {R"("client": 6)", R"("client": 15)", "dependency d Line → Line: client", "P::Order → P::Line",
     "dependency-client-changed", "dependency d Order → Line: client"},
    {R"("supplier": 15)", R"("supplier": 6)", "dependency d Order → Order: supplier", "P::Line → P::Order",
     "dependency-supplier-changed", "dependency d Order → Line: supplier"},
    {R"("elements": [6, 15])", R"("elements": [15, 6])", nullptr, nullptr, nullptr},
    {R"("elements": [6, 15])", R"("elements": [15])", "diagram Main: elements", "P::Order → (none)",
     "diagram-contents-changed"},
};

/// The lines of changes between two documents, without indentation and the lines that only name owners.
std::vector<std::string> changes(const std::string& from, const std::string& to) {
    struct Text final : text::Output {
        void write(std::string_view bytes) override { all += bytes; }
        std::string all;
    } report;
    const diff::Model oldModel = diff::readModel(from);
    const diff::Model newModel = diff::readModel(to);
    const diff::Difference difference(oldModel, newModel, diff::Renames::content, {});
    diff::writeText({.difference = difference, .oldFile = "a", .newFile = "b"}, report);
    std::istringstream lines(report.all);
    std::vector<std::string> found;
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with(']')) {
            found.push_back(line.substr(line.find_first_not_of(" ")));
        }
    }
    return found;
}

std::string lineOf(const char* subject, const std::string& values, const diff::Rule& rule) {
    return std::string("~ ") + subject + " " + values + "  [" + std::string(rule.name) + ", " +
           std::string(diff::weightWord(rule.weight)) + "]";
}

TEST(DiffRules, TellOfEachFieldInBothDirections) {
    const std::string base(document);
    ASSERT_EQ(changes(base, base).size(), 0U);
    std::set<std::string_view> tried;
    for (const Row& row : rows) {
        std::string edited = base;
        const std::size_t at = edited.find(row.from);
        ASSERT_TRUE(at != std::string::npos && edited.find(row.from, at + 1) == std::string::npos) << row.from;
        edited.replace(at, std::string_view(row.from).size(), row.to);
        if (row.subject == nullptr) {
            EXPECT_EQ(changes(base, edited).size(), 0U) << row.to;
            continue;
        }
        const diff::Rule& rule = diff::ruleOf(diff::findRule(row.rule).value());
        const std::string values = row.values;
        const std::size_t arrow = values.find(" → ");
        const std::string back =
            values.substr(arrow + std::string_view(" → ").size()) + " → " + values.substr(0, arrow);
        EXPECT_EQ(changes(base, edited), std::vector{lineOf(row.subject, values, rule)});
        EXPECT_EQ(changes(edited, base), std::vector{lineOf(row.subjectBack != nullptr ? row.subjectBack : row.subject,
                                                            back, diff::ruleOf(*diff::findRule(rule.mirror)))});
        tried.insert(rule.name);
        tried.insert(rule.mirror);
    }
    for (const diff::Rule& rule : diff::rules()) {
        const bool isOfFields =
            !std::regex_search(std::string(rule.name), std::regex("-(added|removed|renamed|moved)$")) &&
            rule.text.find("--show") == std::string_view::npos;
        EXPECT_TRUE(!isOfFields || tried.contains(rule.name)) << rule.name;
    }
}

} // namespace
