#include "model/ModelFile.h"

#include "model/ModelWriter.h"
#include "model/Shapes.h"
#include "model/ToolProperties.h"

namespace bench {

namespace {

void header(PetalText& text) {
    text.beginObject("Petal");
    text.number("version", 42);
    text.quoted("_written", "Rose 4.5.8163.3");
    text.number("charSet", 0);
    text.end();
}

/// A view that no import takes, as it stands before the logical one.
void useCaseView(ModelWriter& writer) {
    PetalText& text = writer.text;
    text.beginObjectOf("root_usecase_package", "Class_Category", "Use Case View");
    writer.quid();
    text.quoted("exportControl", "Public");
    text.beginList("logical_models", "unit_reference_list");
    for (std::uint64_t number = 0; number != 5; ++number) {
        text.beginObject("UseCase", featureName(number));
        writer.quid();
        text.quoted("documentation", sentence(writer.random, 60));
        text.end();
    }
    text.end();
    text.beginList("logical_presentations", "unit_reference_list");
    text.beginObject("UseCaseDiagram", "Main");
    writer.quid();
    text.beginList("items", "diagram_item_list");
    for (std::uint64_t number = 0; number != 5; ++number) {
        text.beginView("UseCaseView", {featureName(number)}, writer.nextView++);
        text.plain("location", "(464, 352)");
        text.end();
    }
    text.end();
    text.end();
    text.end();
    text.end();
}

void logicalView(ModelWriter& writer, const Shape& shape) {
    PetalText& text = writer.text;
    text.beginObjectOf("root_category", "Class_Category", "Logical View");
    writer.quid();
    text.quoted("exportControl", "Public");
    text.plain("global", "TRUE");
    text.beginList("logical_models", "unit_reference_list");
    shape.write(writer);
    text.end();
    text.beginList("logical_presentations", "unit_reference_list");
    text.end();
    text.end();
    writer.counts.add(Counted::packages);
}

/// What follows the logical view: components, and the settings of other tools.
void otherViews(ModelWriter& writer, const Shape& shape) {
    PetalText& text = writer.text;
    text.beginObjectOf("root_subsystem", "SubSystem", "Component View");
    writer.quid();
    text.beginList("physical_models", "unit_reference_list");
    for (std::uint64_t number = 0; number != 5; ++number) {
        text.beginObject("module", featureName(number));
        writer.quid();
        text.quoted("stereotype", "EXE");
        text.end();
    }
    text.end();
    text.end();
    text.beginObjectOf("properties", "Properties");
    settingsUpTo(writer, static_cast<std::uint64_t>(static_cast<double>(text.size()) / (1 - shape.settings)));
    writer.quid();
    text.end();
}

} // namespace

Counts writeModelFile(std::FILE* out, const Shape& shape, Amount amount, std::uint64_t seed) {
    if (amount.unit == Amount::Unit::bytes) {
        amount.number = static_cast<std::uint64_t>(static_cast<double>(amount.number) * (1 - shape.settings));
    }
    ModelWriter writer(out, shape.layout, amount, seed);
    header(writer.text);
    writer.text.beginObject("Design", "Logical View");
    writer.text.plain("is_unit", "TRUE");
    writer.text.plain("is_loaded", "TRUE");
    useCaseView(writer);
    logicalView(writer, shape);
    otherViews(writer, shape);
    writer.text.end();
    writer.text.finish();
    return writer.counts;
}

} // namespace bench
