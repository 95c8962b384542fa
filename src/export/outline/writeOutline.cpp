#include "export/outline/writeOutline.h"

#include "export/Exporter.h"
#include "export/modelWalk.h"
#include "export/outline/OutlineLines.h"
#include "export/outline/elementLines.h"
#include "host/model/KelModel.h"
#include "host/model/KelNote.h"

namespace exporter {

namespace {

class OutlineWriter final : public ModelVisitor {
public:
    explicit OutlineWriter(OutlineLines& lines) : lines_(lines) {}

    void enter(const KelObject& object) override {
        lines_.line(lineOf(object));
        lines_.setDepth(lines_.getDepth() + 1);
        for (const KelNote* note : static_cast<const KelElement&>(object).notes()) {
            lines_.paragraph("note", note->description.view());
        }
        writeLinesBelow(object, lines_);
    }
    void leave(const KelObject& /*object*/) override { lines_.setDepth(lines_.getDepth() - 1); }

private:
    OutlineLines& lines_;
};

} // namespace

void writeOutline(const ExportContext& context) {
    text::BufferedOutput output(context.folder.open(""));
    OutlineLines lines(output);
    OutlineWriter writer(lines);
    walkModel(context.model, outlineParts, writer);
    output.flush();
}

} // namespace exporter
