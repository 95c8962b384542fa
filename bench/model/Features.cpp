#include "model/Features.h"

#include "model/ModelWriter.h"
#include "model/ToolProperties.h"

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
}

void beginAttribute(ModelWriter& writer, std::string_view name, std::string_view type) {
    writer.text.beginObject("ClassAttribute", name);
    uuid(writer, 6);
    writer.quid();
    typeProperty(writer, type);
}

void endAttribute(ModelWriter& writer) {
    writer.text.quoted("exportControl", writer.random.chance(80) ? "Public" : "Private");
    writer.text.end();
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

void qualifier(ModelWriter& writer, std::string_view name) {
    beginAttribute(writer, name, "int");
    endAttribute(writer);
}

void attribute(ModelWriter& writer, std::string_view name, std::string_view type) {
    beginAttribute(writer, name, type);
    countTyped(writer, type);
    if (writer.random.chance(20)) {
        writer.text.quoted("initv", "0");
        writer.counts.add(Counted::initialValueCharacters, 1);
    }
    endAttribute(writer);
    writer.counts.add(Counted::attributes);
}

void parameter(ModelWriter& writer, std::string_view name, std::string_view type) {
    writer.text.beginObject("Parameter", name);
    typeProperty(writer, type);
    countTyped(writer, type);
    writer.text.end();
    writer.counts.add(Counted::arguments);
}

void operation(ModelWriter& writer, std::string_view name, std::size_t parameters) {
    writer.text.beginObject("Operation", name);
    writer.quid();
    if (parameters != 0) {
        writer.text.beginList("parameters", "Parameters");
        const std::uint64_t first = writer.random.next();
        for (std::size_t number = 0; number != parameters; ++number) {
            parameter(writer, parameterName(first + number), anyType(writer));
        }
        writer.text.end();
    }
    if (writer.random.chance(30)) {
        writer.text.quoted("result", spelledType(writer));
    } else {
        writer.declareType(intType);
    }
    if (writer.random.chance(70)) {
        writer.text.quoted("concurrency", "Sequential");
    }
    writer.text.quoted("opExportControl", writer.random.chance(70) ? "Public" : "Protected");
    if (writer.random.chance(3)) {
        condition(writer, "pre_condition");
        condition(writer, "semantics");
    }
    writer.text.number("uid", 0);
    writer.text.end();
    writer.counts.add(Counted::operations);
    writer.counts.add(Counted::returnTypes);
}

} // namespace bench
