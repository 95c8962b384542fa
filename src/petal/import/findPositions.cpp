#include "petal/import/findPositions.h"

#include "export/ClassNames.h"
#include "export/modelWalk.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelModel.h"
#include "layout/makeScene.h"
#include "text/ascii.h"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace petal {

namespace {

constexpr double pointsPerUnit = 72.0 / 300.0; // the file has 300 units to an inch

/// The classes by quid, and the class diagrams by their place in the files.
class Shown final : public exporter::ModelVisitor {
public:
    Shown(const KelModel& model, const source::SourceMap& places) : places_(places), names_(model) {
        exporter::walkModel(model, exporter::documentParts, *this);
    }

    void enter(const KelObject& object) override {
        const source::SourcePlace* place = places_.find(object);
        if (place == nullptr) {
            return;
        }
        if (object.elementType == KelElementType::classObject) {
            const auto* one = static_cast<const KelClass*>(&object);
            if (place->quid.empty()) {
                madeByViews_.try_emplace({place->file, place->begin.line}, one);
            } else {
                classes_.try_emplace(text::lowerCase(place->quid), one);
            }
        } else if (object.elementType == KelElementType::classDiagram) {
            diagrams_.try_emplace({place->file, place->begin.line}, static_cast<const KelClassDiagram*>(&object));
        }
    }

    [[nodiscard]] const KelClassDiagram* diagramAt(std::uint32_t file, std::uint64_t line) const {
        const auto found = diagrams_.find({file, line});
        return found != diagrams_.end() ? found->second : nullptr;
    }
    /// By the quid that the view in the file has for its class; else the class that the view caused, which has no
    /// definition; else by the full name.
    [[nodiscard]] const KelClass* classOf(const layout::Item& item, std::uint32_t file) const {
        if (const auto found = classes_.find(text::lowerCase(item.quid)); found != classes_.end()) {
            return found->second;
        }
        const auto made = madeByViews_.find({file, item.line});
        return made != madeByViews_.end() ? made->second : names_.find(item.title);
    }

private:
    const source::SourceMap& places_;
    exporter::ClassNames names_;
    std::unordered_map<std::string, const KelClass*> classes_;
    using Line = std::pair<std::uint32_t, std::uint64_t>; // the index of a file and a line in it
    std::map<Line, const KelClass*> madeByViews_;
    std::map<Line, const KelClassDiagram*> diagrams_;
};

} // namespace

exporter::DrawnPositions findPositions(const units::UnitTree& files, const KelModel& model,
                                       const source::SourceMap& places) {
    exporter::DrawnPositions positions;
    const Shown shown(model, places);
    const layout::NotationTree tree(files);
    const layout::Elements elements(tree);
    for (const layout::NodeId node : layout::diagramsOf(tree)) {
        const layout::ObjectHead& head = tree[node].head();
        const KelClassDiagram* diagram = shown.diagramAt(head.file, head.line);
        if (diagram == nullptr) {
            continue;
        }
        for (const layout::Item& item : layout::makeScene(tree, elements, node).items) {
            const KelClass* one = item.hasBox ? shown.classOf(item, head.file) : nullptr;
            if (one != nullptr) {
                positions.add(*diagram, *one,
                              {.x = (item.box.x + item.box.width / 2) * pointsPerUnit,
                               .y = (item.box.y + item.box.height / 2) * pointsPerUnit,
                               .width = item.box.width * pointsPerUnit,
                               .height = item.box.height * pointsPerUnit});
            }
        }
    }
    return positions;
}

} // namespace petal
