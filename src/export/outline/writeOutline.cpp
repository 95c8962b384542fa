#include "export/outline/writeOutline.h"

#include "export/Exporter.h"
#include "export/Omissions.h"
#include "export/asItsClass.h"
#include "export/modelWalk.h"
#include "export/outline/OutlineLines.h"
#include "export/outline/elementLines.h"
#include "host/model/KelModel.h"
#include "host/model/KelNote.h"

namespace exporter {

namespace {

constexpr std::string_view why = "an outline is an excerpt";
constexpr Omission description{"description", "descriptions", why};
constexpr Omission semantics{"semantics text", "semantics texts", why};
constexpr Omission condition{"condition", "conditions", why};
constexpr Omission concurrency{"concurrency", "concurrencies", why};
constexpr Omission space{"space", "spaces", why};

/// Counts what no line shows of the element.
void addOmissions(const KelObject& element, Omissions& omissions) {
    asItsClass(element, [&](const auto& object) {
        if constexpr (requires { object.description; }) {
            omissions.add(description, object.description.isEmpty() ? 0 : 1);
        }
        if constexpr (requires { object.semantics; }) {
            omissions.add(semantics, object.semantics.isEmpty() ? 0 : 1);
            omissions.add(condition,
                          (object.precondition.isEmpty() ? 0U : 1U) + (object.postcondition.isEmpty() ? 0U : 1U));
        }
        if constexpr (requires { object.concurrency; }) {
            omissions.add(concurrency, object.concurrency == 0 ? 0 : 1);
        }
        if constexpr (requires { object.space; }) {
            omissions.add(space, object.space == 0 ? 0 : 1);
        }
    });
}

class OutlineWriter final : public ModelVisitor {
public:
    OutlineWriter(OutlineLines& lines, Omissions& omissions) : lines_(lines), omissions_(omissions) {}

    void enter(const KelObject& object) override {
        lines_.line(lineOf(object));
        addOmissions(object, omissions_);
        lines_.setDepth(lines_.getDepth() + 1);
        for (const KelNote* note : static_cast<const KelElement&>(object).notes()) {
            lines_.paragraph("note", note->description.view());
        }
        writeLinesBelow(object, lines_);
    }
    void leave(const KelObject& /*object*/) override { lines_.setDepth(lines_.getDepth() - 1); }

private:
    OutlineLines& lines_;
    Omissions& omissions_;
};

} // namespace

void writeOutline(const ExportContext& context) {
    text::BufferedOutput output(context.folder.open(""));
    OutlineLines lines(output);
    OutlineWriter writer(lines, context.omissions);
    walkModel(context.model, outlineParts, writer);
    output.flush();
}

} // namespace exporter
