#include "html/writeHtml.h"

#include "export/Exporter.h"
#include "export/Omissions.h"
#include "export/json/writeJson.h"
#include "export/modelWalk.h"
#include "export/outline/writeOutline.h"
#include "host/model/KelModel.h"
#include "html/DataBlock.h"
#include "html/pageData.h"
#include "text/Embedded.h"
#include "text/escape.h"

#include <algorithm>
#include <array>
#include <span>

namespace html {

/// Made by `embed_texts`.
std::span<const text::Embedded> parts();
std::span<const text::Embedded> scripts();

namespace {

constexpr std::array replacements{text::Escapes::Replacement{'&', "&amp;"}, text::Escapes::Replacement{'<', "&lt;"},
                                  text::Escapes::Replacement{'>', "&gt;"},  text::Escapes::Replacement{'"', "&quot;"},
                                  text::Escapes::Replacement{'\n', "\n"},   text::Escapes::Replacement{'\t', "\t"}};
/// Characters that could not be seen, or would turn the direction of a line, are not shown.
constexpr text::Escapes markup{replacements, "\xef\xbf\xbd", "\xef\xbf\xbd", nullptr};

const text::Embedded& part(std::string_view name) {
    return *std::ranges::find(parts(), name, &text::Embedded::name);
}

/// Collects an output up to a limit, and passes the rest by.
class Limited final : public text::Output {
public:
    void write(std::string_view bytes) override {
        isWhole_ = isWhole_ && text_.size() + bytes.size() <= most;
        if (isWhole_) {
            text_ += bytes;
        }
    }
    [[nodiscard]] bool isWhole() const { return isWhole_; }
    [[nodiscard]] const std::string& getText() const { return text_; }

private:
    static constexpr std::size_t most = 500'000;

    std::string text_;
    bool isWhole_ = true;
};

class FolderOfOne final : public exporter::OutputFolder {
public:
    explicit FolderOfOne(text::Output& output) : output_(output) {}
    [[nodiscard]] text::Output& open(std::string_view /*name*/) override { return output_; }
    [[nodiscard]] text::Output& openBeside() override { return output_; } // for options that are not set here

private:
    text::Output& output_;
};

/// The packages and classes of a model, indented, for models whose outline is too long for a page.
class ShortOutline final : private exporter::ModelVisitor {
public:
    ShortOutline(const KelModel& model, text::BufferedOutput& output) : output_(output) {
        walkModel(model, exporter::documentParts, *this);
    }

private:
    static bool isShown(const KelObject& object) {
        return object.elementType == KelElementType::designPackage || object.elementType == KelElementType::classObject;
    }
    void enter(const KelObject& object) override {
        constexpr std::size_t mostIndented = 20;
        if (isShown(object)) {
            output_.putRepeated(' ', 2 * std::min(depth_++, mostIndented));
            output_.put(object.elementType == KelElementType::classObject ? "class " : "package ");
            output_.put(text::escaped(text::printableText(object.getName().view()), markup));
            output_.put('\n');
        }
    }
    void leave(const KelObject& object) override { depth_ -= isShown(object) ? 1 : 0; }

    text::BufferedOutput& output_;
    std::size_t depth_ = 0;
};

void writeOutline(const exporter::ExportContext& context, text::BufferedOutput& output) {
    Limited outline;
    FolderOfOne folder(outline);
    const exporter::OptionValues options({}, {});
    exporter::Omissions omissions; // the page has all of the model
    exporter::writeOutline({.model = context.model,
                            .source = context.source,
                            .options = options,
                            .folder = folder,
                            .omissions = omissions});
    output.put("<noscript>\n<main>\n<p>Without script this page shows an outline of the model.</p>\n<pre>");
    if (outline.isWhole()) {
        output.put(text::escaped(outline.getText(), markup));
    } else {
        const ShortOutline shortened(context.model, output);
    }
    output.put("</pre>\n</main>\n</noscript>\n");
}

void writeModel(const exporter::ExportContext& context, text::BufferedOutput& output) {
    DataBlock block(output, "petal-model");
    FolderOfOne folder(block);
    static const std::vector<std::string> settings{"places=true"};
    const exporter::OptionValues options(exporter::jsonOptions, settings);
    exporter::writeJson({.model = context.model,
                         .source = context.source,
                         .options = options,
                         .folder = folder,
                         .omissions = context.omissions});
    block.finish();
}

void writeData(const exporter::ExportContext& context, text::BufferedOutput& output) {
    DataBlock block(output, "petal-page");
    text::BufferedOutput buffered(block);
    writePageData(context, buffered);
    buffered.flush();
    block.finish();
}

void writeHead(const KelModel& model, text::BufferedOutput& output) {
    output.put("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
               "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; script-src");
    for (const text::Embedded& script : scripts()) {
        output.put(" 'sha256-");
        output.put(script.hash);
        output.put('\'');
    }
    output.put("; style-src 'sha256-");
    output.put(part("style").hash);
    output.put("'; img-src data:; base-uri 'none'; form-action 'none'\">\n"
               "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
               "<meta name=\"color-scheme\" content=\"light dark\">\n<title>");
    const std::string name = text::escaped(model.getName().view(), markup);
    output.put(name.find_first_not_of(" \n\t") == std::string::npos ? "A model" : name);
    output.put("</title>\n<link rel=\"icon\" href=\"data:,\">\n<style>");
    output.put(part("style").text);
    output.put("</style>\n</head>\n");
}

} // namespace

void writeHtml(const exporter::ExportContext& context) {
    text::BufferedOutput output(context.folder.open(""));
    writeHead(context.model, output);
    output.put("<body>\n");
    writeOutline(context, output);
    output.put(part("body").text);
    writeModel(context, output);
    writeData(context, output);
    if (context.notation != nullptr) {
        writePictures(*context.notation, output);
    }
    for (const text::Embedded& script : scripts()) {
        output.put("<script>");
        output.put(script.text);
        output.put("</script>\n");
    }
    output.put("</body>\n</html>\n");
    output.flush();
}

} // namespace html
