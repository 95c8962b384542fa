#include "html/writeHtml.h"

#include "export/ElementIds.h"
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

#include <rapidjson/reader.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <initializer_list>
#include <span>
#include <string>

namespace html {

/// Made by `embed_texts`.
std::span<const text::Embedded> parts();
std::span<const text::Embedded> scripts();
std::span<const text::Embedded> indexScripts();

namespace {

/// Begins the block of what an index shows of the page, which stands on lines of its own.
constexpr std::string_view summaryStart = R"(<script type="application/json" id="petal-summary">)";
/// The first scripts of a page, which its index has, too.
constexpr std::size_t sharedScripts = 3;

constexpr std::array replacements{text::Escapes::Replacement{'&', "&amp;"}, text::Escapes::Replacement{'<', "&lt;"},
                                  text::Escapes::Replacement{'>', "&gt;"},  text::Escapes::Replacement{'"', "&quot;"},
                                  text::Escapes::Replacement{'\n', "\n"},   text::Escapes::Replacement{'\t', "\t"}};
/// Characters that could not be seen, or would turn the direction of a line, are not shown.
constexpr text::Escapes markup{replacements, "\xef\xbf\xbd", "\xef\xbf\xbd", nullptr};

const text::Embedded& part(std::string_view name) {
    return *std::ranges::find(parts(), name, &text::Embedded::name);
}

/// Collects an output up to a limit, at which it ends the writing.
class Limited final : public text::Output {
public:
    struct Full {};

    /// Throws `Full`.
    void write(std::string_view bytes) override {
        if (text_.size() + bytes.size() > most) {
            throw Full();
        }
        text_ += bytes;
    }
    [[nodiscard]] const std::string& getText() const { return text_; }

private:
    static constexpr std::size_t most = 500'000;

    std::string text_;
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
        walkModel(model, exporter::packageParts, *this);
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
    output.put("<noscript>\n<p>Without script this page shows an outline of the model.</p>\n<pre>");
    try {
        exporter::writeOutline({.model = context.model,
                                .findSource = context.findSource,
                                .options = options,
                                .folder = folder,
                                .omissions = omissions});
        output.put(text::escaped(outline.getText(), markup));
    } catch (const Limited::Full&) {
        const ShortOutline shortened(context.model, output);
    }
    output.put("</pre>\n</noscript>\n");
}

void writeModel(const exporter::ExportContext& context, text::BufferedOutput& output) {
    DataBlock block(output, "petal-model");
    FolderOfOne folder(block);
    static const std::vector<std::string> settings{"places=true"};
    const exporter::OptionValues options(exporter::jsonOptions, settings);
    exporter::writeJson({.model = context.model,
                         .findSource = context.findSource,
                         .options = options,
                         .folder = folder,
                         .omissions = context.omissions});
    block.finish();
}

void writeData(const exporter::ExportContext& context, text::BufferedOutput& output) {
    const exporter::ElementIds ids(context.model, context.getSource());
    output.put(summaryStart);
    writeSummary(context, ids, output);
    output.put("</script>\n");
    DataBlock block(output, "petal-page");
    writePageData(context, ids, block);
    block.finish();
}

/// The scripts that a page runs, in their order.
using Scripts = std::span<const text::Embedded>;

void writeHead(std::string_view title, std::initializer_list<Scripts> scripts, text::BufferedOutput& output) {
    output.put("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
               "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; script-src");
    for (const Scripts& some : scripts) {
        for (const text::Embedded& script : some) {
            output.put(" 'sha256-");
            output.put(script.hash);
            output.put('\'');
        }
    }
    output.put("; style-src 'sha256-");
    output.put(part("style").hash);
    output.put("'; img-src data:; base-uri 'none'; form-action 'none'\">\n"
               "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
               "<meta name=\"color-scheme\" content=\"light dark\">\n<title>");
    const std::string name = text::escaped(title, markup);
    output.put(name.find_first_not_of(" \n\t") == std::string::npos ? "A model" : name);
    output.put("</title>\n<link rel=\"icon\" href=\"data:,\">\n<style>");
    output.put(part("style").text);
    output.put("</style>\n</head>\n");
}

void writeScripts(std::initializer_list<Scripts> scripts, text::BufferedOutput& output) {
    for (const Scripts& some : scripts) {
        for (const text::Embedded& script : some) {
            output.put("<script>");
            output.put(script.text);
            output.put("</script>\n");
        }
    }
}

/// The summary in a page, a JSON text; an empty object when there is none.
std::string readSummary(const std::string& page) {
    std::ifstream file(page, std::ios::binary);
    std::string line;
    while (std::getline(file, line)) {
        if (!line.starts_with(summaryStart)) {
            continue;
        }
        std::string summary = line.substr(summaryStart.size());
        constexpr std::string_view end = "</script>";
        while (!summary.ends_with(end) && std::getline(file, line)) {
            summary += '\n' + line;
        }
        summary.resize(summary.size() - (summary.ends_with(end) ? end.size() : 0));
        rapidjson::Reader reader;
        rapidjson::BaseReaderHandler<> nobody;
        rapidjson::StringStream stream(summary.c_str());
        const bool isWhole = !reader.Parse<rapidjson::kParseIterativeFlag>(stream, nobody).IsError();
        return isWhole && summary.find('<') == std::string::npos ? summary : "{}";
    }
    return "{}";
}

void writeIndexData(std::span<const exporter::IndexedOutput> models, text::BufferedOutput& output) {
    const auto text = [&](std::string_view value) { output.put(text::quotedJsonText(text::validText(value)) + ","); };
    output.put('[');
    for (const exporter::IndexedOutput& model : models) {
        output.put(&model == models.data() ? "\n[" : ",\n[");
        text(model.file);
        text(model.link);
        text(model.state);
        text(model.text);
        output.put(model.output.empty() ? "{}" : readSummary(model.output));
        output.put(']');
    }
    output.put(']');
}

} // namespace

void writeIndex(std::span<const exporter::IndexedOutput> models, text::Output& to) {
    text::BufferedOutput output(to);
    // of the scripts of pages those that only define
    const std::initializer_list<Scripts> all{scripts().first(sharedScripts), indexScripts()};
    writeHead("Models", all, output);
    output.put("<body>\n<noscript>\n<h1>Models</h1>\n<ul>\n");
    for (const exporter::IndexedOutput& model : models) {
        const std::string name = text::escaped(text::validText(model.file), markup);
        output.put(model.output.empty() ? "<li>" + name : "<li><a href=\"" + model.link + "\">" + name + "</a>");
        output.put(": " + std::string(model.state) + (model.text.empty() ? "" : ": ") +
                   text::escaped(model.text, markup) + "</li>\n");
    }
    output.put("</ul>\n</noscript>\n");
    output.put(part("index").text);
    DataBlock block(output, "petal-index");
    text::BufferedOutput buffered(block);
    writeIndexData(models, buffered);
    buffered.flush();
    block.finish();
    writeScripts(all, output);
    output.put("</body>\n</html>\n");
    output.flush();
}

void writeHtml(const exporter::ExportContext& context) {
    text::BufferedOutput output(context.folder.open(""));
    writeHead(context.model.getName().view(), {scripts()}, output);
    output.put("<body>\n");
    writeOutline(context, output);
    output.put(part("body").text);
    writeModel(context, output);
    writeData(context, output);
    if (context.notation != nullptr) {
        writePictures(*context.notation, output);
    }
    writeScripts({scripts()}, output);
    output.put("</body>\n</html>\n");
    output.flush();
}

} // namespace html
