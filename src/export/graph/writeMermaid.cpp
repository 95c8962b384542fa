#include "export/ClassKind.h"
#include "export/ElementIds.h"
#include "export/Exporter.h"
#include "export/Omissions.h"
#include "export/UniqueNames.h"
#include "export/graph/Syntax.h"
#include "export/graph/parts.h"
#include "export/graph/writeGraphs.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelModel.h"
#include "host/model/KelNote.h"
#include "text/utf8.h"

#include <algorithm>
#include <array>

namespace exporter {

namespace {

using namespace graph;
using Replacement = text::Escapes::Replacement;

constexpr Omission packageStereotype{"stereotype of a package", "stereotypes of packages", "namespaces have none"};
constexpr Omission packageName{"package name with other characters than letters and digits",
                               "package names with other characters than letters and digits",
                               "namespaces have identifiers only"};

/// A browser refuses a diagram of more than 50,000 characters.
constexpr std::size_t mostCharacters = 48'000;

constexpr std::array replacements{
    Replacement{'"', "#34;"},  Replacement{'#', "#35;"},  Replacement{'$', "#36;"},  Replacement{'%', "#37;"},
    Replacement{'&', "#38;"},  Replacement{'(', "#40;"},  Replacement{')', "#41;"},  Replacement{'*', "#42;"},
    Replacement{':', "#58;"},  Replacement{';', "#59;"},  Replacement{'<', "#60;"},  Replacement{'>', "#62;"},
    Replacement{'@', "#64;"},  Replacement{'[', "#91;"},  Replacement{'\\', "#92;"}, Replacement{']', "#93;"},
    Replacement{'^', "#94;"},  Replacement{'`', "#96;"},  Replacement{'{', "#123;"}, Replacement{'|', "#124;"},
    Replacement{'}', "#125;"}, Replacement{'~', "#126;"},
};
constexpr std::array markReplacements{Replacement{'_', "#95;"}, Replacement{'-', "#45;"}, Replacement{'+', "#43;"}};
/// A line that holds this word and the name of a direction is a statement wherever they are.
constexpr std::array<std::string_view, 1> words{"direction"};
constexpr LabelRules rules{
    .escapes = {.replacements = replacements, .control = "\uFFFD", .unprintable = "\uFFFD", .invalidByte = nullptr},
    .marks = "_-+",
    .inWordsOnly = "_",
    .markEscapes = {.replacements = markReplacements,
                    .control = "\uFFFD",
                    .unprintable = "\uFFFD",
                    .invalidByte = nullptr},
    .words = words,
    .letterForm = "#%u;",
};

/// For the title, which is shown as it is. A text with "<" would be taken for HTML, so it is a note.
constexpr LabelRules titleRules{
    .escapes = {.replacements = {}, .control = "\uFFFD", .unprintable = "\uFFFD", .invalidByte = nullptr},
    .marks = {},
    .inWordsOnly = {},
    .markEscapes = {.replacements = {}, .control = "", .unprintable = "", .invalidByte = nullptr},
    .words = {},
    .letterForm = "",
};

constexpr std::array markdownReplacements{
    Replacement{'!', "\\!"},   Replacement{'"', "\\\""},  Replacement{'#', "\\#"},  Replacement{'$', "\\$"},
    Replacement{'%', "\\%"},   Replacement{'&', "&amp;"}, Replacement{'\'', "\\'"}, Replacement{'(', "\\("},
    Replacement{')', "\\)"},   Replacement{'*', "\\*"},   Replacement{'+', "\\+"},  Replacement{'-', "\\-"},
    Replacement{'.', "\\."},   Replacement{'/', "\\/"},   Replacement{':', "\\:"},  Replacement{'<', "&lt;"},
    Replacement{'=', "\\="},   Replacement{'>', "&gt;"},  Replacement{'@', "\\@"},  Replacement{'[', "\\["},
    Replacement{'\\', "\\\\"}, Replacement{']', "\\]"},   Replacement{'^', "\\^"},  Replacement{'_', "\\_"},
    Replacement{'`', "\\`"},   Replacement{'{', "\\{"},   Replacement{'|', "\\|"},  Replacement{'}', "\\}"},
    Replacement{'~', "\\~"},
};
constexpr LabelRules markdownRules{
    .escapes = {.replacements = markdownReplacements,
                .control = "\uFFFD",
                .unprintable = "\uFFFD",
                .invalidByte = nullptr},
    .marks = {},
    .inWordsOnly = {},
    .markEscapes = {.replacements = {}, .control = "", .unprintable = "", .invalidByte = nullptr},
    .words = {},
    .letterForm = "",
};

/// Letters that the oldest version takes in identifiers.
bool isIdentifierCharacter(int character, bool /*isFirst*/) {
    struct Range {
        int first;
        int last;
    };
    constexpr std::array ranges{Range{'0', '9'},       Range{'A', 'Z'},       Range{'a', 'z'},
                                Range{'_', '_'},       Range{0x00C0, 0x00D6}, Range{0x00D8, 0x00F6},
                                Range{0x00F8, 0x024F}, Range{0x0391, 0x03A1}, Range{0x03A3, 0x03CE},
                                Range{0x0410, 0x044F}, Range{0x3041, 0x3096}, Range{0x30A1, 0x30FA},
                                Range{0x4E00, 0x9FCC}, Range{0xAC00, 0xD7A3}};
    return std::ranges::any_of(
        ranges, [character](const Range& range) { return range.first <= character && character <= range.last; });
}

constexpr std::array<std::string_view, 12> reservedWords{"callback", "class",     "classdef", "click",
                                                         "cssclass", "direction", "end",      "href",
                                                         "link",     "namespace", "note",     "style"};
static_assert(std::ranges::is_sorted(reservedWords));
constexpr NameRules identifiers{
    .longest = 100, .allows = isIdentifierCharacter, .foldsCase = true, .reserved = reservedWords, .quote = 0};

/// The identifiers of the packages. They are the same in all pictures.
class Namespaces {
public:
    Namespaces(const Graph& graph, Omissions& omissions) : ids_(graph.getClusters().size()) {
        const std::span<const Cluster> clusters = graph.getClusters();
        const bool hasOneRoot = std::ranges::count(clusters, Cluster::none, &Cluster::parent) == 1;
        UniqueNames names(identifiers);
        for (std::uint32_t one = 0; one < graph.getClasses().size(); ++one) {
            (void)names.make(graph.idOf(one)); // classes and namespaces share their identifiers
        }
        for (std::uint32_t one = 0; one < graph.getClasses().size(); ++one) {
            const std::uint32_t cluster = graph.clusterOf(one);
            if (cluster != Cluster::none && ids_[cluster].empty()) {
                ids_[cluster] = names.make(pathOf(clusters, cluster, hasOneRoot));
                const KelDesignPackage& package = *clusters[cluster].package;
                omissions.add(packageStereotype, static_cast<std::uint64_t>(!package.stereotype.isEmpty()));
                omissions.add(packageName, static_cast<std::uint64_t>(!isPlain(package.getName().view())));
            }
        }
    }
    [[nodiscard]] const std::string& idOf(std::size_t cluster) const { return ids_[cluster]; }

private:
    static bool isPlain(std::string_view name) {
        for (std::size_t at = 0; at < name.size();) {
            if (!isIdentifierCharacter(text::nextCharacter(name, at), false)) {
                return false;
            }
        }
        return !name.empty();
    }
    static std::string pathOf(std::span<const Cluster> clusters, std::uint32_t cluster, bool hasOneRoot) {
        std::vector<std::string_view> names;
        for (std::uint32_t at = cluster; at != Cluster::none; at = clusters[at].around) {
            const bool isSaid = hasOneRoot && clusters[at].around == Cluster::none && !names.empty();
            if (!isSaid) {
                names.push_back(clusters[at].package->getName().view());
            }
        }
        std::string path;
        for (auto name = names.rbegin(); name != names.rend(); ++name) {
            path += (path.empty() ? "" : "_") + std::string(*name);
        }
        return path;
    }

    std::vector<std::string> ids_; // by cluster; empty for one without classes of its own
};

class Mermaid final : public Syntax {
public:
    Mermaid(const Graph& graph, const Namespaces& namespaces, const Members& members)
        : graph_(graph), namespaces_(namespaces), members_(members), labels_(rules), kinds_(members.getKinds()) {}

    void start(const Picture& picture, std::string_view direction, bool isTitled, std::string& into) const {
        const bool isHtml = picture.name.find('<') != std::string::npos;
        into += "---\n";
        into +=
            isTitled && !isHtml ? "title: " + text::quotedJsonText(Labels(titleRules).line(picture.name)) + "\n" : "";
        into += "config:\n  class:\n    hideEmptyMembersBox: true\n---\n";
        into += "classDiagram\n";
        into.append("direction ").append(direction) += '\n';
        into += isTitled && isHtml ? "note \"" + labels_.line(picture.name) + "\"\n" : "";
        if (picture.notesOf != nullptr) {
            for (const KelNote* note : notesOf(*picture.notesOf)) {
                into += "note \"" + text(*note) + "\"\n";
            }
        }
    }

    void startCluster(const Cluster& cluster, std::size_t /*level*/, std::string& into) override {
        into +=
            "namespace " + namespaces_.idOf(static_cast<std::size_t>(&cluster - graph_.getClusters().data())) + " {\n";
    }
    void endCluster(std::size_t /*level*/, std::string& into) override { into += "}\n"; }

    void addBox(const Box& box, std::size_t level, std::string& into) override {
        const KelClass& one = *graph_.getClasses()[box.one];
        const std::string arguments = templateOf(one, labels_);
        into += indent(level) + "class " + graph_.idOf(box.one) + "[\"" + labels_.name(one.getName().view());
        into += arguments.empty() ? "\"]" : "#60;" + arguments + "#62;\"]";
        const std::string rows = rowsOf(one, box.isBare, level + 1);
        into += rows.empty() ? "\n" : " {\n" + rows + indent(level) + "}\n";
    }

    void addBeside(const Box& box, std::string& into) override {
        if (!box.isBare) {
            for (const KelNote* note : notesOf(*graph_.getClasses()[box.one])) {
                into += "note for " + graph_.idOf(box.one) + " \"" + text(*note) + "\"\n";
            }
        }
    }

    void addEdge(const Edge& edge, std::string& into) override {
        into += graph_.idOf(*edge.first) + end(edge.firstRole, edge.secondRole) + " " + arrowOf(edge) +
                end(edge.secondRole, edge.firstRole) + " " + graph_.idOf(*edge.second);
        into += nameOf(edge).empty() ? "\n" : " : " + labels_.name(nameOf(edge)) + "\n";
    }

    [[nodiscard]] static std::string comment(const std::string& text) { return "%% " + text + "\n"; }

private:
    [[nodiscard]] std::string text(const KelNote& note) const {
        std::string all;
        for (const std::string& line : labels_.lines(note.description.view())) {
            all += (all.empty() ? "" : "<br/>") + line;
        }
        return all;
    }

    [[nodiscard]] std::string end(const KelAssociationRole* role, const KelAssociationRole* other) const {
        const std::string text = endOf(role, other, labels_);
        return text.empty() ? "" : " \"" + text + "\"";
    }

    [[nodiscard]] std::string rowsOf(const KelClass& one, bool isBare, std::size_t level) const {
        std::string words; // only the first annotation is drawn, so it says everything
        const auto addWord = [&words](const std::string& word) { words += (words.empty() ? "" : ", ") + word; };
        for (const std::string_view word : keywordsOf(one)) {
            addWord(labels_.line(word));
        }
        if (one.isAbstract) {
            addWord("abstract");
        }
        std::string rows = words.empty() ? "" : indent(level) + "<<" + words + ">>\n";
        if (isBare) {
            return rows;
        }
        const bool isEnumeration = kinds_.kindOf(one) == ClassKind::enumeration;
        const auto add = [&](const Row& row) { rows += indent(level) + row.text + (row.isStatic ? "$\n" : "\n"); };
        for (const KelAttribute* attribute : members_.attributesOf(one)) {
            add(rowOf(*attribute, isEnumeration, labels_));
        }
        for (const KelOperation* operation : members_.operationsOf(one)) {
            add(rowOf(*operation, " ", labels_));
        }
        return rows;
    }

    const Graph& graph_;
    const Namespaces& namespaces_;
    const Members& members_;
    Labels labels_;
    const ClassKinds& kinds_;
};

class MermaidWriter {
public:
    explicit MermaidWriter(const ExportContext& context)
        : context_(context), graph_(context.model, context.omissions), namespaces_(graph_, context.omissions),
          members_(context.options), syntax_(graph_, namespaces_, members_), markdown_(markdownRules),
          output_(context.folder.open("")) {}

    void write() {
        if (isMarkdown()) {
            writeMarkdown();
        } else {
            writePicture();
        }
    }

private:
    void writePicture() {
        const std::vector<Picture> pictures = picturesOf(graph_, context_, "model");
        if (pictures.size() > 1) {
            throw WrongOption("these options give " + std::to_string(pictures.size()) +
                              " pictures, and a file of Mermaid holds one; a Markdown file (NAME.md) holds any number");
        }
        countOmissions(context_.model, pictures, context_.omissions);
        const Picture& picture = pictures.front();
        CountedOutput counted(output_);
        {
            text::BufferedOutput output(counted);
            writeBlock(picture, output);
            output.flush();
        }
        if (const std::size_t full = fullCount(picture); counted.count > mostCharacters || full > mostClasses()) {
            const std::string remark = "This picture may be too large for a browser: " + std::to_string(counted.count) +
                                       " characters, " + std::to_string(full) +
                                       " classes. In Markdown (NAME.md) it is split into parts.";
            output_.put(Mermaid::comment(remark));
            context_.omissions.addRemark(remark);
        }
        output_.put(Mermaid::comment(countsOf(picture)));
        for (const std::string& line : linesOf(context_.omissions)) {
            output_.put(Mermaid::comment(line));
        }
        output_.flush();
    }

    void writeMarkdown() {
        const std::vector<Picture> pictures = picturesOf(graph_, context_, "diagrams");
        countOmissions(context_.model, pictures, context_.omissions);
        output_.put("# " + markdown_.name(context_.model.getName().view()) + "\n");
        for (const Picture& picture : pictures) {
            const std::vector<Picture> parts = split(picture);
            for (const Picture& part : parts) {
                writeSection(part);
            }
        }
        const std::vector<std::string> lines = linesOf(context_.omissions);
        output_.put(lines.empty() ? "" : "\n---\n\n");
        for (const std::string& line : lines) {
            output_.put("- " + line + "\n");
        }
        output_.flush();
    }

    struct CountedOutput final : text::Output {
        explicit CountedOutput(text::BufferedOutput& to) : to(to) {}
        void write(std::string_view bytes) override {
            count += characterCount(bytes);
            to.put(bytes);
        }
        text::BufferedOutput& to;
        std::size_t count = 0;
    };
    struct NoOutput final : text::Output {
        void write(std::string_view bytes) override { count += characterCount(bytes); }
        std::size_t count = 0;
    };

    [[nodiscard]] std::uint64_t mostClasses() const { return context_.options.number("max-classes"); }
    [[nodiscard]] bool isMarkdown() const { return context_.ending == ".md"; }
    static std::size_t fullCount(const Picture& picture) {
        return static_cast<std::size_t>(std::ranges::count(picture.boxes, false, &Box::isBare));
    }

    void writeBlock(const Picture& picture, text::BufferedOutput& output) {
        std::string text;
        syntax_.start(picture, context_.options.get("direction"), !isMarkdown() && !picture.name.empty(), text);
        output.put(text);
        writeContent(graph_, picture, Nesting::flat, syntax_, output);
    }

    void writeSection(const Picture& picture) {
        const std::string part = picture.part.empty() ? "" : " (" + picture.part + ")";
        output_.put("\n## " + markdown_.name(picture.name) + markdown_.line(part) + "\n\n");
        output_.put(picture.qualifiedName.empty() ? "" : markdown_.line(picture.qualifiedName) + ": ");
        output_.put(countsOf(picture) + ".\n\n```mermaid\n");
        writeBlock(picture, output_);
        output_.put("```\n");
    }

    [[nodiscard]] std::size_t sizeOf(const Picture& picture) {
        NoOutput counted;
        text::BufferedOutput output(counted);
        writeBlock(picture, output);
        output.flush();
        return counted.count;
    }

    std::vector<Picture> split(const Picture& picture);

    const ExportContext& context_;
    Graph graph_;
    Namespaces namespaces_;
    Members members_;
    Mermaid syntax_;
    Labels markdown_;
    text::BufferedOutput output_;
};

std::vector<Picture> MermaidWriter::split(const Picture& picture) {
    if (fullCount(picture) <= mostClasses() && sizeOf(picture) <= mostCharacters) {
        return {picture};
    }
    return partsOf(graph_, picture, syntax_, mostClasses(), mostCharacters);
}

} // namespace

void writeMermaid(const ExportContext& context) {
    MermaidWriter(context).write();
}

} // namespace exporter
