#include "model/Diagrams.h"

#include "model/ModelWriter.h"
#include "model/ToolProperties.h"

namespace bench {

namespace {

void font(PetalText& text) {
    text.beginObjectOf("font", "Font");
    text.number("size", 10);
    text.quoted("face", "Arial");
    text.plain("bold", "FALSE");
    text.plain("italics", "TRUE");
    text.plain("underline", "FALSE");
    text.number("color", 0);
    text.end();
}

void label(PetalText& text, std::uint64_t view, std::string_view words) {
    text.beginObjectOf("label", "ItemLabel");
    text.reference("Parent_View", view);
    text.plain("location", "(766, 37)");
    text.number("fill_color", 13434879);
    text.number("nlines", 1);
    text.number("max_width", 324);
    text.quoted("label", words);
    text.end();
}

std::string place(ModelWriter& writer) {
    return "(" + std::to_string(writer.random.below(3000)) + ", " + std::to_string(writer.random.below(2000)) + ")";
}

/// What a class shows of its features.
void compartment(ModelWriter& writer, std::uint64_t view) {
    PetalText& text = writer.text;
    text.beginObjectOf("compartment", "Compartment");
    text.reference("Parent_View", view);
    text.plain("location", place(writer));
    text.quoted("icon_style", "Icon");
    text.number("fill_color", 16777215);
    text.number("nlines", 2);
    text.beginList("compartmentItems", "Compartment");
    text.item("+ " + featureName(writer.random.below(1000)) + "()");
    text.end();
    text.end();
}

} // namespace

void attachments(ModelWriter& writer) {
    writer.text.plain("origin_attachment", place(writer));
    writer.text.plain("terminal_attachment", place(writer));
}

void beginDiagram(ModelWriter& writer, std::string_view name) {
    PetalText& text = writer.text;
    text.beginObject("ClassDiagram", name);
    uuid(writer, 30);
    writer.quid();
    text.quoted("title", name);
    text.number("zoom", 100);
    text.number("max_height", 28350);
    text.number("max_width", 21600);
    text.number("origin_x", 0);
    text.number("origin_y", 0);
    text.beginList("items", "diagram_item_list");
    writer.counts.add(Counted::diagrams);
}

void endDiagram(ModelWriter& writer) {
    writer.text.end();
    writer.text.end();
}

std::uint64_t classView(ModelWriter& writer, std::string_view name) {
    PetalText& text = writer.text;
    const std::uint64_t view = writer.nextView++;
    text.beginView("ClassView", {"Class", name}, view);
    text.plain("ShowCompartmentStereotypes", "TRUE");
    text.plain("SuppressAttribute", "TRUE");
    text.plain("IncludeAttribute", "TRUE");
    text.plain("IncludeOperation", "TRUE");
    text.plain("location", place(writer));
    font(text);
    label(text, view, name.substr(name.rfind(':') + 1));
    text.quoted("icon_style", "Icon");
    text.number("line_color", 3342489);
    text.number("fill_color", 16777088);
    writer.quidu();
    if (writer.random.chance(20)) {
        compartment(writer, view);
    }
    text.number("width", 342);
    text.number("height", 110);
    text.number("annotation", 8);
    text.end();
    writer.counts.add(Counted::drawnElements);
    return view;
}

void noteOn(ModelWriter& writer, std::uint64_t view) {
    PetalText& text = writer.text;
    const std::uint64_t note = writer.nextView++;
    const std::string words = sentence(writer.random, 60);
    text.beginView("NoteView", {}, note);
    text.plain("location", place(writer));
    label(text, note, words);
    text.number("line_color", 3342489);
    text.number("fill_color", 13434879);
    text.number("width", 300);
    text.number("height", 175);
    text.end();
    text.beginView("AttachView", {""}, writer.nextView++);
    text.plain("stereotype", "TRUE");
    text.reference("client", note);
    text.reference("supplier", view);
    text.number("line_style", 0);
    attachments(writer);
    text.end();
    writer.counts.add(Counted::notes);
    writer.counts.add(Counted::noteCharacters, words.size());
}

} // namespace bench
