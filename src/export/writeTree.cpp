#include "export/writeTree.h"

#include "export/OutlineLines.h"
#include "export/exporters.h"
#include "export/modelWalk.h"
#include "export/outlineForms.h"
#include "host/model/KelModel.h"
#include "host/model/KelNote.h"
#include "text/Output.h"

namespace exporter {

namespace {

class OutlineWriter final : public ModelVisitor {
public:
    explicit OutlineWriter(OutlineLines& lines) : lines_(lines) {}

    void enter(const KelObject& object) override {
        const OutlineForm& form = outlineFormOf(object);
        lines_.line(form.line(object));
        lines_.setDepth(lines_.getDepth() + 1);
        for (const KelNote* note : static_cast<const KelElement&>(object).notes()) {
            lines_.paragraph("note", note->description.view());
        }
        if (form.linesBelow != nullptr) {
            form.linesBelow(object, lines_);
        }
    }
    void startPart(const Part& /*part*/) override {}
    void endPart(const Part& /*part*/) override {}
    void leave(const KelObject& /*object*/) override { lines_.setDepth(lines_.getDepth() - 1); }

private:
    OutlineLines& lines_;
};

} // namespace

void writeTree(const ExportContext& context) {
    text::BufferedOutput output(context.output);
    OutlineLines lines(output);
    OutlineWriter writer(lines);
    walkModel(context.model, outlineParts, writer);
    output.flush();
}

} // namespace exporter
