#include "model/Classes.h"
#include "model/Features.h"
#include "model/ModelWriter.h"
#include "model/Names.h"
#include "model/shapes/shapeFunctions.h"

namespace bench {

namespace {

constexpr char lastOperation = 'z';
constexpr char lastParameter = 'f';

void denseOperation(ModelWriter& writer, char name) {
    PetalText& text = writer.text;
    text.beginObject("Operation", std::string_view(&name, 1));
    text.beginList("parameters", "Parameters");
    for (char inner = 'a'; inner <= lastParameter; ++inner) {
        parameter(writer, std::string_view(&inner, 1), "int");
    }
    text.end();
    text.quoted("concurrency", "Guarded");
    text.quoted("opExportControl", "Public");
    text.plain("static", "TRUE");
    text.plain("virtual", "TRUE");
    text.end();
    writer.counts.add(Counted::operations);
    writer.counts.add(Counted::returnTypes);
    writer.declareType(intType);
}

} // namespace

/// Nothing takes fewer bytes for its keywords than parameters of short names.
void denseText(ModelWriter& writer) {
    while (writer.wantsMore(writer.nextClass)) {
        beginClass(writer, writer.nextClass++);
        writer.text.beginList("operations", "Operations");
        for (char name = 'a'; name <= lastOperation; ++name) {
            denseOperation(writer, name);
        }
        writer.text.end();
        writer.text.end();
    }
}

void sparseText(ModelWriter& writer) {
    constexpr std::size_t longestText = 9900; // an import cuts what is longer than 9,999 bytes
    while (writer.wantsMore(writer.nextClass)) {
        beginClass(writer, writer.nextClass++);
        writer.documentation(longestText);
        writer.text.end();
    }
}

void textsOfOneClass(ModelWriter& writer) {
    constexpr std::size_t shortText = 60;
    beginClass(writer, writer.nextClass++);
    for (std::uint64_t number = 0; writer.wantsMore(number); ++number) {
        writer.documentation(shortText);
    }
    writer.text.end();
}

} // namespace bench
