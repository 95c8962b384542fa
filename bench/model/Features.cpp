#include "model/Features.h"

#include "model/ModelWriter.h"
#include "model/Names.h"

#include <array>

namespace bench {

namespace {

constexpr std::array<std::string_view, 12> spelledTypes{
    "int",   "long",  "boolean",        "char*",         "double",   "char[80]",
    "float", "short", "unsigned short", "unsigned long", "char[20]", "void*"};
constexpr std::uint64_t otherTypes = 4000;

std::string spelledType(ModelWriter& writer) {
    const std::uint64_t number = writer.random.below(spelledTypes.size());
    writer.declareType(number);
    return std::string(spelledTypes[number]);
}

void countTyped(ModelWriter& writer, std::string_view type) {
    writer.counts.add(Counted::types);
    if (type.empty()) {
        writer.declareType(intType);
    }
}

void typeProperty(ModelWriter& writer, std::string_view type) {
    if (!type.empty()) {
        writer.text.quoted("type", type);
    }
    countTyped(writer, type);
}

void condition(ModelWriter& writer, std::string_view property) {
    writer.text.beginObjectOf(property, "Semantic_Info");
    writer.text.quoted("PDL", sentence(writer.random, 30));
    writer.text.end();
}

} // namespace

std::string anyType(ModelWriter& writer) {
    if (writer.random.chance(65)) {
        return spelledType(writer);
    }
    const std::uint64_t number = writer.random.below(otherTypes);
    writer.declareType(spelledTypes.size() + number);
    return typeName(number);
}

void beginAttribute(ModelWriter& writer, std::string_view name, std::string_view type) {
    writer.text.beginObject("ClassAttribute", name);
    writer.counts.add(Counted::attributes);
    typeProperty(writer, type);
}

void attribute(ModelWriter& writer, std::string_view name, std::string_view type) {
    beginAttribute(writer, name, type);
    writer.text.end();
}

void parameter(ModelWriter& writer, std::string_view name, std::string_view type) {
    writer.text.beginObject("Parameter", name);
    writer.counts.add(Counted::arguments);
    typeProperty(writer, type);
    writer.text.end();
}

void operation(ModelWriter& writer, std::string_view name, std::size_t parameters) {
    writer.text.beginObject("Operation", name);
    writer.counts.add(Counted::operations);
    writer.counts.add(Counted::returnTypes);
    writer.quid();
    if (parameters != 0) {
        writer.text.beginList("parameters", "Parameters");
        for (std::size_t number = 0; number != parameters; ++number) {
            parameter(writer, featureName(writer.nextFeature++), anyType(writer));
        }
        writer.text.end();
    }
    writer.text.quoted("result", spelledType(writer));
    writer.text.quoted("concurrency", "Sequential");
    writer.text.quoted("opExportControl", writer.random.chance(70) ? "Public" : "Protected");
    if (writer.random.chance(20)) {
        condition(writer, "pre_condition");
        condition(writer, "semantics");
    }
    writer.text.number("uid", 0);
    writer.text.end();
}

void toolProperties(ModelWriter& writer, std::size_t number) {
    writer.text.beginList("attributes", "Attribute_Set");
    for (; number != 0; --number) {
        writer.text.beginObject("Attribute");
        writer.text.quoted("tool", writer.random.chance(50) ? "Java" : "DDL");
        writer.text.quoted("name", featureName(writer.random.below(60)));
        if (writer.random.chance(60)) {
            writer.text.plain("value", "FALSE");
        } else {
            writer.text.quoted("value", sentence(writer.random, 20));
        }
        writer.text.end();
    }
    writer.text.end();
}

} // namespace bench
