// Every diagram of a file is drawn as documents that XML's own reader takes, whatever the file holds: as many groups as
// there are views, no character that drives anything, numbers that a page can have, and the same bytes the second time.

#include "MemoryFolder.h"
#include "layout/makeScene.h"
#include "layout/write.h"
#include "require.h"
#include "support/ImportedModel.h"
#include "units/UnitLocator.h"

#include <cmath>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>

namespace {

class Kept final : public text::Output {
public:
    void write(std::string_view bytes) override { text.append(bytes); }
    std::string text;
};

std::string drawn(const layout::Scene& scene, bool asSvg, layout::Theme theme) {
    Kept kept;
    text::BufferedOutput output(kept);
    if (asSvg) {
        layout::writeSvg(scene, theme, output);
    } else {
        layout::DrawioWriter writer(theme, output);
        writer.write(scene);
        writer.end();
    }
    output.flush();
    return kept.text;
}

void checkDocument(const std::string& text) {
    const int options = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, options), &xmlFreeDoc);
    fuzz::require(document != nullptr, "a picture is no XML");
    fuzz::require(text.find("<script") == std::string::npos, "a picture has a script");
    fuzz::require(text.find("nan") == std::string::npos || text.find("=\"nan\"") == std::string::npos,
                  "a picture has a number that is none");
}

std::size_t countOf(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

void checkScene(const layout::Scene& scene) {
    fuzz::require(std::isfinite(scene.bounds.x) && std::isfinite(scene.bounds.y) && scene.bounds.width > 0 &&
                      scene.bounds.height > 0 && std::isfinite(scene.bounds.width + scene.bounds.height),
                  "a picture has no size");
    for (const layout::Item& item : scene.items) {
        fuzz::require(item.hasBox || item.route.size() >= 2 || item.kind == "AssociationViewNew", "a view is nowhere");
        fuzz::require(!item.title.empty(), "a view has no title");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const fuzz::MemoryFolder folder;
    std::string file(reinterpret_cast<const char*>(bytes), size);
    folder.put("model.mdl", file.starts_with("(object Petal") ? file : std::string(petalHeader) + file);
    units::UnitLocator locator(units::PathSymbols{}, {});
    units::UnitTree files = units::readUnitTree(folder.getPath() / "model.mdl", locator);
    if (files.files.size() > 1) {
        return 0; // a file of the machine's own
    }
    const layout::NotationTree tree(files);
    const layout::Elements elements(tree);
    for (const layout::NodeId diagram : layout::diagramsOf(tree)) {
        const layout::Scene scene = layout::makeScene(tree, elements, diagram);
        checkScene(scene);
        const std::string picture = drawn(scene, true, layout::Theme::file);
        checkDocument(picture);
        fuzz::require(countOf(picture, "<g data-view=") == scene.items.size(), "a view is lost");
        fuzz::require(picture == drawn(layout::makeScene(tree, elements, diagram), true, layout::Theme::file),
                      "a picture differs from the same one");
        checkDocument(drawn(scene, false, layout::Theme::plain));
    }
    return 0;
}
