#include "export/ClassKind.h"
#include "export/Exporter.h"
#include "export/Omissions.h"
#include "export/UniqueNames.h"
#include "export/graph/Syntax.h"
#include "export/graph/writeGraphs.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelNote.h"

#include <array>
#include <cstdio>

namespace exporter {

namespace {

using namespace graph;
using Replacement = text::Escapes::Replacement;

// Characters that the preprocessor, the syntax or Creole acts on. A code in angle brackets is shown as its character
// everywhere but at the end of a label, where it would be a template argument.
constexpr std::array replacements{
    Replacement{'"', "<U+0022>"}, Replacement{'%', "<U+0025>"}, Replacement{'!', "<U+0021>"},
    Replacement{'<', "<U+003C>"}, Replacement{'>', "<U+003E>"}, Replacement{'\\', "<U+005C>"},
    Replacement{'{', "<U+007B>"}, Replacement{'}', "<U+007D>"}, Replacement{'~', "<U+007E>"},
    Replacement{'&', "<U+0026>"}, Replacement{'#', "<U+0023>"}, Replacement{'|', "<U+007C>"},
    Replacement{'@', "<U+0040>"}, Replacement{'$', "<U+0024>"}, Replacement{'`', "<U+0060>"},
    Replacement{'^', "<U+005E>"},
};
constexpr std::array markReplacements{
    Replacement{'-', "<U+002D>"}, Replacement{'_', "<U+005F>"}, Replacement{'/', "<U+002F>"},
    Replacement{'.', "<U+002E>"}, Replacement{'=', "<U+003D>"}, Replacement{'\'', "<U+0027>"},
    Replacement{'+', "<U+002B>"}, Replacement{'[', "<U+005B>"}, Replacement{']', "<U+005D>"},
    Replacement{'*', "<U+002A>"}, Replacement{':', "<U+003A>"}, Replacement{';', "<U+003B>"},
};
/// The characters beyond ASCII that PlantUML takes for quotes and for signs of a comment.
constexpr std::array<std::string_view, 6> words{"«", "»", "“", "”", "‘", "’"};
constexpr LabelRules rules{
    .escapes = {.replacements = replacements, .control = "\uFFFD", .unprintable = "\uFFFD", .invalidByte = nullptr},
    .marks = "-_/.='+[]:;*",
    .inWordsOnly = "_",
    .markEscapes = {.replacements = markReplacements,
                    .control = "\uFFFD",
                    .unprintable = "\uFFFD",
                    .invalidByte = nullptr},
    .words = words,
    .letterForm = "<U+%04X>",
};

/// PlantUML makes a file with the name of a block.
constexpr NameRules blockNames{.longest = 100,
                               .allows =
                                   [](int character, bool) {
                                       return (character >= '0' && character <= '9') ||
                                              (character >= 'A' && character <= 'Z') ||
                                              (character >= 'a' && character <= 'z') || character == '_' ||
                                              (character >= 0x4E00 && character <= 0x9FFF);
                                   },
                               .foldsCase = true,
                               .reserved = {},
                               .quote = 0};

class PlantUml final : public Syntax {
public:
    PlantUml(const Graph& graph, const Members& members)
        : graph_(graph), members_(members), labels_(rules), kinds_(members.getKinds()) {}

    void start(const Picture& picture, const std::string& blockName, bool isSideways, std::string& into) {
        into += "@startuml" + (blockName.empty() ? "" : " " + blockName) + "\n";
        into += "set namespaceSeparator none\n"
                "hide empty members\n"
                "skinparam classAttributeIconSize 0\n"
                "skinparam shadowing false\n";
        into += isSideways ? "left to right direction\n" : "";
        into += picture.name.empty() ? "" : "title " + titled(labels_.name(picture.name)) + "\n";
        if (picture.notesOf != nullptr) {
            for (const KelNote* note : notesOf(*picture.notesOf)) {
                into += "note as n" + std::to_string(++noteCount_) + "\n";
                addText(*note, into);
            }
        }
        if (picture.boxes.empty()) { // PlantUML would draw its own greeting
            into += "note \"no classes\" as n0\n";
        }
    }

    void startCluster(const Cluster& cluster, std::size_t level, std::string& into) override {
        into += indent(level) + "package \"" + quoted(cluster.package->getName().view()) + "\" as p" +
                std::to_string(&cluster - graph_.getClusters().data());
        into += cluster.package->stereotype.isEmpty()
                    ? " {\n"
                    : " <<" + shapeless(cluster.package->stereotype.view()) + ">> {\n";
    }
    void endCluster(std::size_t level, std::string& into) override { into += indent(level) + "}\n"; }

    void addBox(const Box& box, std::size_t level, std::string& into) override {
        const KelClass& one = *graph_.getClasses()[box.one];
        const ClassKind kind = kinds_.kindOf(one);
        const std::string arguments = templateOf(one, labels_);
        const bool isPlainTemplate = arguments.find_first_of("<>&") == std::string::npos;
        into += indent(level) + std::string(keywordFor(one, kind)) + " \"";
        into += arguments.empty() || isPlainTemplate
                    ? quoted(one.getName().view())
                    : labels_.name(one.getName().view()) + "<U+003C>" + arguments + "&#62;";
        into += "\" as " + graph_.idOf(box.one);
        into += isPlainTemplate && !arguments.empty() ? " <" + arguments + ">" : "";
        for (const std::string_view word : keywordsOf(one)) {
            const bool isShown = kind == ClassKind::interface && word == "interface"; // by the letter in the circle
            into += isShown ? "" : " <<" + quoted(word) + ">>";
        }
        const std::string rows = box.isBare ? "" : rowsOf(one, kind == ClassKind::enumeration, level + 1);
        into += rows.empty() ? "\n" : " {\n" + rows + indent(level) + "}\n";
        if (!box.isBare) {
            addNotes(one, graph_.idOf(box.one), into);
        }
    }

    void addEdge(const Edge& edge, std::string& into) override {
        into += graph_.idOf(*edge.first) + end(edge.firstRole, edge.secondRole) + " " + arrowOf(edge) +
                end(edge.secondRole, edge.firstRole) + " " + graph_.idOf(*edge.second);
        into += nameOf(edge).empty() ? "\n" : " : " + labels_.name(nameOf(edge)) + "\n";
    }

    [[nodiscard]] static std::string comment(const std::string& text) { return "' " + text + "\n"; }

private:
    static std::string_view keywordFor(const KelClass& one, ClassKind kind) {
        if (kind == ClassKind::interface) {
            return "interface";
        }
        if (kind == ClassKind::enumeration) {
            return "enum";
        }
        return one.isAbstract ? "abstract class" : "class";
    }

    // A title of other characters than letters and digits alone is a syntax error.
    static std::string titled(const std::string& label) {
        constexpr std::string_view usual = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
        constexpr std::string_view blankOfNoWidth = "<U+200B>";
        return label.find_first_of(usual) != std::string::npos ? label : std::string(blankOfNoWidth) + label;
    }

    // A label or a stereotype, which must not end with a code in angle brackets.
    [[nodiscard]] std::string quoted(std::string_view text) const {
        std::string label = labels_.name(text);
        constexpr std::size_t codeLength = 8;
        if (label.ends_with('>')) {
            const int last = std::stoi(label.substr(label.size() - 5, 4), nullptr, 16);
            label.resize(label.size() - codeLength);
            const bool isPlain = last == '$' || last == '\\'; // their numbers end PlantUML
            label += isPlain ? std::string(1, static_cast<char>(last)) : "&#" + std::to_string(last) + ";";
        }
        return label == "$" ? "<U+200B>$" : label; // else it would begin the name of a sprite
    }

    // The stereotype of a package. Words such as "database" would become its shape, and "interface" ends PlantUML.
    [[nodiscard]] std::string shapeless(std::string_view stereotype) const {
        const std::string label = quoted(stereotype);
        const bool isWord = stereotype.size() > 1 && label.starts_with(stereotype.front());
        std::array<char, 16> code{};
        std::snprintf(code.data(), code.size(), "<U+%04X>", static_cast<unsigned>(label.front()));
        return isWord ? code.data() + label.substr(1) : label;
    }

    [[nodiscard]] std::string end(const KelAssociationRole* role, const KelAssociationRole* other) const {
        const std::string text = endOf(role, other, labels_);
        return text.empty() ? "" : " \"" + text + "\"";
    }

    [[nodiscard]] std::string rowsOf(const KelClass& one, bool isEnumeration, std::size_t level) const {
        std::string rows;
        const auto add = [&](std::string_view kind, const Row& row) {
            const bool isTilde = row.text.starts_with('~'); // would escape what follows it
            rows += indent(level) + std::string(kind) + (row.isStatic ? "{static} " : "");
            rows += (isTilde ? "<U+007E>" + row.text.substr(1) : row.text) + "\n";
        };
        for (const KelAttribute* attribute : members_.attributesOf(one)) {
            add("{field} ", rowOf(*attribute, isEnumeration, labels_));
        }
        for (const KelOperation* operation : members_.operationsOf(one)) {
            add("{method} ", rowOf(*operation, " : ", labels_));
        }
        return rows;
    }

    void addNotes(const KelClass& one, const std::string& id, std::string& into) const {
        constexpr std::array sides{"right", "left", "top", "bottom"};
        std::size_t count = 0;
        for (const KelNote* note : notesOf(one)) {
            into += "note " + std::string(sides[count++ % sides.size()]) + " of " + id + "\n";
            addText(*note, into);
        }
    }

    void addText(const KelNote& note, std::string& into) const {
        for (std::string line : labels_.lines(note.description.view())) {
            const std::size_t first = line.find_first_not_of(' ');
            if (first != std::string::npos && (line[first] == 'e' || line[first] == 'E')) { // "end note"
                line.replace(first, 1, line[first] == 'e' ? "<U+0065>" : "<U+0045>");
            }
            into += line + "\n";
        }
        into += "end note\n";
    }

    const Graph& graph_;
    const Members& members_;
    Labels labels_;
    const ClassKinds& kinds_;
    std::size_t noteCount_ = 0;
};

} // namespace

void writePlantUml(const ExportContext& context) {
    const Graph graph(context.model, context.omissions);
    const std::vector<Picture> pictures = picturesOf(graph, context, "model");
    countOmissions(context.model, pictures, context.omissions);
    const Members members(context.options);
    UniqueNames names(blockNames);
    text::BufferedOutput output(context.folder.open(""));
    for (const Picture& picture : pictures) {
        PlantUml syntax(graph, members);
        std::string text;
        syntax.start(picture, pictures.size() > 1 ? names.make(picture.name) : "",
                     context.options.get("direction") == "LR", text);
        output.put(text);
        writeContent(graph, picture, Nesting::nested, syntax, output);
        text = PlantUml::comment(countsOf(picture));
        if (&picture == &pictures.back()) {
            for (const std::string& line : linesOf(context.omissions)) {
                text += PlantUml::comment(line);
            }
        }
        output.put(text + "@enduml\n");
    }
    output.flush();
}

} // namespace exporter
