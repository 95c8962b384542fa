#include "export/sql/Schema.h"

#include <algorithm>
#include <array>

namespace exporter::sql {

namespace {

struct RuleRow {
    Rule rule;
    std::string_view text;
};

constexpr std::array rules{
    RuleRow{Rule::classTable, "a table for each class"},
    RuleRow{Rule::treeTable, "a table for a class and its subclasses"},
    RuleRow{Rule::concreteTable, "a table for each class that is not abstract"},
    RuleRow{Rule::joinTable, "a table of keys for an association of many to many"},
    RuleRow{Rule::madeKey, "a made key"},
    RuleRow{Rule::inheritedKey, "the key of the supertype"},
    RuleRow{Rule::kindColumn, "the class of the row"},
    RuleRow{Rule::attribute, "an attribute"},
    RuleRow{Rule::inheritedAttribute, "an inherited attribute"},
    RuleRow{Rule::takenAttribute, "an attribute of a supertype that is no table"},
    RuleRow{Rule::attributeReference, "an attribute with the type of a class"},
    RuleRow{Rule::supertypeReference, "a reference to a further supertype"},
    RuleRow{Rule::associationReference, "a reference for an association"},
    RuleRow{Rule::joinReference, "an end of an association of many to many"},
    RuleRow{Rule::primaryKey, "a primary key"},
    RuleRow{Rule::candidateKey, "a candidate key"},
    RuleRow{Rule::foreignKey, "a foreign key of the model"},
    RuleRow{Rule::oneToOne, "an association of one to one"},
};

struct TopicRow {
    Topic topic;
    std::string_view text;
};

constexpr std::array topics{
    TopicRow{Topic::tables, "Tables"},
    TopicRow{Topic::unknownType, "Types that nothing knows; their columns are texts"},
    TopicRow{Topic::type, "Values that are not checked"},
    TopicRow{Topic::byDefault, "Initial values that are no literals of their types, and so no defaults"},
    TopicRow{Topic::multiplicity, "Ends without a multiplicity, which count as 0..1 and are not UNIQUE"},
    TopicRow{Topic::association, "Associations"},
    TopicRow{Topic::supertype, "Inheritance"},
    TopicRow{Topic::foreignKey, "Foreign keys of the model that are none of the schema"},
    TopicRow{Topic::name, "Changed names"},
};

} // namespace

std::string_view ruleText(Rule rule) {
    return std::ranges::find(rules, rule, &RuleRow::rule)->text;
}

std::string_view topicText(Topic topic) {
    return std::ranges::find(topics, topic, &TopicRow::topic)->text;
}

std::string changeText(const NameChange& change) {
    std::string text = change.hasPackage ? "with its package, as several classes have the name" : "";
    const auto also = [&](bool is, std::string_view what) {
        if (is) {
            text.append(text.empty() ? "" : "; ").append(what);
        }
    };
    also(change.isMade, "as its own cannot be the name");
    also(change.isCut, "cut");
    also(change.isNumbered, "numbered, as another has the name");
    return text;
}

} // namespace exporter::sql
