#include "diff/lines.h"
#include "text/Output.h"

#include <algorithm>
#include <array>

namespace diff {

namespace {

constexpr std::size_t deepest = 20; // levels of indentation: a report stays proportional to what has changed
constexpr std::string_view reset = "\x1b[0m";

std::string_view colourOf(char symbol) {
    switch (symbol) {
    case '+':
        return "\x1b[32m";
    case '-':
        return "\x1b[31m";
    case '~':
        return "\x1b[33m";
    case '>':
        return "\x1b[36m";
    default:
        return "";
    }
}

class TextWriter {
public:
    TextWriter(const Report& report, text::Output& output) : report_(report), out_(output) {}

    void write() {
        put(title(report_) + ": " + summaryText(summaryOf(report_.difference)) + "\n");
        if (const std::string remark = matchingRemark(report_.difference); !remark.empty()) {
            put("(" + remark + ")\n");
        }
        forLines(report_.difference, [this](const Line& line) { writeLine(line); });
        out_.flush();
    }

    void writeStatistics() {
        const std::vector<PackageCount> counts = countByPackage(report_.difference);
        put(title(report_) + ": " + summaryText(summaryOf(report_.difference)) + "\n");
        for (const auto& [name, summary] : counts) {
            put(" " + name + ":");
            putCount('+', summary.added);
            putCount('-', summary.removed);
            putCount('>', summary.renamed + summary.moved);
            putCount('~', summary.changed);
            if (const std::uint64_t breaking = summary.byWeight[0]; breaking > 0) {
                put(" (" + std::to_string(breaking) + " breaking)");
            }
            put("\n");
        }
        out_.flush();
    }

private:
    void put(std::string_view text) { out_.put(text); }
    void putColoured(std::string_view colour, std::string_view text) {
        const bool isColoured = report_.isColoured && !colour.empty();
        put(isColoured ? colour : "");
        put(text);
        put(isColoured ? reset : "");
    }
    void putCount(char symbol, std::uint64_t count) {
        if (count > 0) {
            put(" ");
            putColoured(colourOf(symbol), symbol + std::to_string(count));
        }
    }

    void writeLine(const Line& line) {
        out_.putRepeated(' ', 2 * std::min(line.depth, deepest));
        std::string text(1, line.symbol);
        text += line.kind.empty() ? "" : " " + line.kind;
        text += line.label.empty() ? "" : " " + line.label;
        text += line.field.empty() || line.kind.empty() ? "" : ":";
        text += line.field.empty() ? "" : " " + line.field;
        text += line.hasValues ? " " + line.from + " → " + line.to : "";
        putColoured(colourOf(line.symbol), text);
        if (line.rule != nullptr) {
            put("  [" + std::string(line.rule->name) + ", ");
            putColoured(line.rule->weight == Weight::breaking ? "\x1b[1;31m" : "", weightWord(line.rule->weight));
            put(line.evidence ? ", matched by content]" : "]");
        }
        put("\n");
    }

    const Report& report_;
    text::BufferedOutput out_;
};

constexpr std::array allForms{
    Form{"text", "a tree of what has changed", writeText},
    Form{"json", "all changes, for programs", writeJson},
    Form{"markdown", "a list for pull requests and pages", writeMarkdown},
    Form{"html", "a page for browsers", writeHtml},
};

} // namespace

std::span<const Form> forms() {
    return allForms;
}

const Form* findForm(std::string_view name) {
    const auto* found = std::ranges::find(allForms, name, &Form::name);
    return found != allForms.end() ? found : nullptr;
}

void writeText(const Report& report, text::Output& output) {
    TextWriter(report, output).write();
}

void writeStatistics(const Report& report, text::Output& output) {
    TextWriter(report, output).writeStatistics();
}

} // namespace diff
