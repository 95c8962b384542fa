#include "export/exporters.h"

#include "export/graph/writeGraphs.h"
#include "export/json/writeJson.h"
#include "export/outline/writeOutline.h"
#include "export/sql/writeSql.h"
#include "export/uml/writeUml.h"
#include "html/part.h"
#include "loading/part.h"
#include "text/ascii.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace exporter {

namespace {

using namespace std::string_view_literals;

constexpr std::array jsonEndings{".json"sv};
constexpr std::array treeEndings{".txt"sv};
constexpr std::array umlEndings{".uml"sv};
constexpr std::array plantUmlEndings{".puml"sv, ".plantuml"sv};
constexpr std::array mermaidEndings{".mmd"sv, ".md"sv};
constexpr std::array dotEndings{".dot"sv, ".gv"sv};
constexpr std::array sqlEndings{".sql"sv};
constexpr std::array htmlEndings{".html"sv, ".htm"sv};

bool needsPositions(const OptionValues& options) {
    return options.get("positions") == "source";
}

bool needsPlaces(const OptionValues& options) {
    return options.isOn("places");
}

void writeHtml(const ExportContext& context) {
    loading::part<html::Part>().writeHtml(context);
}

void writeHtmlIndex(std::span<const IndexedOutput> models, text::Output& output) {
    loading::part<html::Part>().writeIndex(models, output);
}

/// Element ids have the quids of the files.
bool always(const OptionValues& /*options*/) {
    return true;
}

constexpr std::array table{
    Exporter{"json", "the whole model as a JSON document for programs", Shape::oneFile, jsonEndings, jsonOptions,
             writeJson, needsPlaces, needsPlaces},
    Exporter{"tree", "an outline for people", Shape::oneFile, treeEndings, {}, writeOutline},
    Exporter{"uml", "UML 2.5 in XMI for modelling tools, such as those of Eclipse", Shape::oneFile, umlEndings,
             umlOptions, writeUml, always},
    Exporter{"plantuml", "class diagrams as text for PlantUML", Shape::oneFile, plantUmlEndings, plantUmlOptions,
             writePlantUml},
    Exporter{"mermaid", "class diagrams as text for Mermaid, alone or in Markdown", Shape::oneFile, mermaidEndings,
             mermaidOptions, writeMermaid},
    Exporter{"dot", "a graph of classes and packages for Graphviz", Shape::oneFile, dotEndings, dotOptions, writeDot,
             always, needsPositions, needsPositions},
    Exporter{"sql", "tables and keys for PostgreSQL, SQLite or Oracle", Shape::oneFile, sqlEndings, sqlOptions,
             writeSql, always, nullptr, nullptr, checkSqlOptions},
    Exporter{.format = "html",
             .description = "a report for people: a page for a browser, in one file",
             .shape = Shape::oneFile,
             .endings = htmlEndings,
             .options = {},
             .write = writeHtml,
             .needsSource = always,
             .needsPlaces = always,
             .needsFiles = always,
             .writeIndex = writeHtmlIndex},
    Exporter{"none", "no model: only import and report", Shape::nothing, {}, {}, nullptr},
};

} // namespace

std::span<const Exporter> exporters() {
    return table;
}

const Exporter* findExporter(std::string_view format) {
    const auto* found = std::ranges::find(table, format, &Exporter::format);
    return found != table.end() ? found : nullptr;
}

std::string endingOf(std::string_view path) {
    return text::lowerCase(std::filesystem::path(path).extension().native());
}

const Exporter* findExporterByEnding(std::string_view path) {
    const std::string ending = endingOf(path);
    const auto* found = std::ranges::find_if(table, [&](const Exporter& exporter) {
        return std::ranges::find(exporter.endings, ending) != exporter.endings.end();
    });
    return found != table.end() ? found : nullptr;
}

} // namespace exporter
