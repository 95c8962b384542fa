#include "diff/lines.h"
#include "text/Output.h"
#include "text/escape.h"

#include <algorithm>
#include <array>

namespace diff {

namespace {

using Replacement = text::Escapes::Replacement;

/// A text of the model for Markdown: as code, in which nothing begins markup. Unprintable characters have been spelled
/// out before.
std::string asCode(std::string_view text) {
    std::size_t longest = 0; // of the runs of backticks
    for (std::size_t at = 0; (at = text.find('`', at)) != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_not_of('`', at), text.size());
        longest = std::max(longest, end - at);
        at = end;
    }
    const std::string fence(longest + 1, '`');
    const bool isPadded = text.empty() || text.front() == '`' || text.back() == '`' || text.front() == ' ';
    const std::string padding(isPadded ? " " : "");
    return fence + padding + std::string(text) + padding + fence;
}

/// The same within a table, in which "|" ends a cell even so.
std::string asCodeOfTable(std::string_view text) {
    constexpr std::array bar{Replacement{'|', "\\|"}};
    return asCode(text::escaped(text, {bar, "\xef\xbf\xbd", "\xef\xbf\xbd", nullptr}));
}

constexpr std::array htmlReplacements{Replacement{'&', "&amp;"}, Replacement{'<', "&lt;"}, Replacement{'>', "&gt;"},
                                      Replacement{'"', "&quot;"}};
constexpr text::Escapes html{htmlReplacements, "\xef\xbf\xbd", "\xef\xbf\xbd", nullptr};

std::size_t levelOf(const Line& line) {
    constexpr std::size_t deepest = 12;
    return std::min(line.depth, deepest);
}

std::string_view wordOf(char symbol) {
    switch (symbol) {
    case '+':
        return "added";
    case '-':
        return "removed";
    case '>':
        return "renamed";
    case '~':
        return "changed";
    default:
        return "";
    }
}

constexpr std::string_view pageStart = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'">
<title>)";
constexpr std::string_view pageStyle = R"(</title>
<style>
:root { color-scheme: light dark; --text: #1f2328; --dim: #59636e; --page: #fff; --line: #d1d9e0;
  --added: #116329; --addedBack: #dafbe1; --removed: #a40e26; --removedBack: #ffebe9; --changed: #7d4e00;
  --changedBack: #fff8c5; --renamed: #0550ae; --renamedBack: #ddf4ff }
@media (prefers-color-scheme: dark) { :root { --text: #d1d7e0; --dim: #9198a1; --page: #14181d; --line: #3d444d;
  --added: #7ee787; --addedBack: #12301d; --removed: #ffa198; --removedBack: #3c1618; --changed: #f2cc60;
  --changedBack: #33280a; --renamed: #79c0ff; --renamedBack: #10263f } }
body { margin: 0 auto; max-width: 75rem; padding: 1rem; background: var(--page); color: var(--text);
  font: 0.95rem/1.5 system-ui, sans-serif }
h1 { font-size: 1.3rem; overflow-wrap: anywhere }
fieldset { display: flex; flex-wrap: wrap; gap: 0.3rem 1.2rem; border: 1px solid var(--line); border-radius: 0.4rem;
  margin: 0 0 1rem }
legend { color: var(--dim) }
p { margin: 0; padding: 0.1rem 0.5rem; border-left: 3px solid transparent; overflow-wrap: anywhere }
p b { display: inline-block; width: 1.1em; text-align: center }
i { color: var(--dim); font-style: normal }
small { color: var(--dim); margin-left: 0.7em; white-space: nowrap }
small.breaking { color: var(--removed); font-weight: 600 }
del { text-decoration: none; background: var(--removedBack); color: var(--removed); border-radius: 0.2rem;
  padding: 0 0.2em }
ins { text-decoration: none; background: var(--addedBack); color: var(--added); border-radius: 0.2rem; padding: 0 0.2em }
.added { border-color: var(--added); background: var(--addedBack) }
.added b { color: var(--added) }
.removed { border-color: var(--removed); background: var(--removedBack) }
.removed b { color: var(--removed) }
.changed { border-color: var(--changed) }
.changed b { color: var(--changed) }
.renamed { border-color: var(--renamed) }
.renamed b { color: var(--renamed) }
body:has(#breaking:not(:checked)) p.breaking, body:has(#compatible:not(:checked)) p.compatible,
body:has(#information:not(:checked)) p.information { display: none }
@media print { fieldset { display: none } }
)";

class MarkupWriter {
public:
    MarkupWriter(const Report& report, text::Output& output) : report_(report), out_(output) {}

    void writeMarkdown() {
        put("# " + asCode(text::printableText(report_.oldFile)) + " → " + asCode(text::printableText(report_.newFile)) +
            "\n\n");
        put(summaryText(summaryOf(report_.difference)) + "\n");
        if (const std::string remark = matchingRemark(report_.difference); !remark.empty()) {
            put("\n_" + remark + "_\n");
        }
        const std::vector<PackageCount> counts = countByPackage(report_.difference);
        if (!counts.empty()) {
            put("\n| package | added | removed | renamed or moved | changed | breaking |\n"
                "|---|--:|--:|--:|--:|--:|\n");
            for (const auto& [name, summary] : counts) {
                put("| " + asCodeOfTable(name));
                for (const std::uint64_t count : {summary.added, summary.removed, summary.renamed + summary.moved,
                                                  summary.changed, summary.byWeight[0]}) {
                    put(" | " + (count > 0 ? std::to_string(count) : std::string()));
                }
                put(" |\n");
            }
            put("\n");
        }
        forLines(report_.difference, [this](const Line& line) { writeMarkdownLine(line); });
        out_.flush();
    }

    void writeHtml() {
        const std::string name = text::escaped(title(report_), html);
        put(pageStart);
        put(name);
        put(pageStyle);
        for (int level = 1; level <= 12; ++level) {
            const std::string number = std::to_string(level);
            put(".d" + number + " { margin-left: " + std::to_string(level * 5 / 4) + "." +
                std::to_string(level * 125 % 100 / 10) + "rem }\n");
        }
        const Summary summary = summaryOf(report_.difference);
        put("</style>\n</head>\n<body>\n<h1>" + name + "</h1>\n<p>" + summaryText(summary) + "</p>\n");
        if (const std::string remark = matchingRemark(report_.difference); !remark.empty()) {
            put("<p>" + text::escaped(remark, html) + "</p>\n");
        }
        put("<fieldset><legend>Shown</legend>\n");
        for (const Weight weight : {Weight::breaking, Weight::compatible, Weight::information}) {
            const std::string word(weightWord(weight));
            put(R"(<label><input type="checkbox" id=")" + word + R"(" checked> )");
            put(word + " (" + std::to_string(summary.byWeight[static_cast<std::size_t>(weight)]) + ")</label>\n");
        }
        put("</fieldset>\n<main>\n");
        forLines(report_.difference, [this](const Line& line) { writeHtmlLine(line); });
        put("</main>\n</body>\n</html>\n");
        out_.flush();
    }

private:
    void put(std::string_view text) { out_.put(text); }

    void writeMarkdownLine(const Line& line) {
        out_.putRepeated(' ', 2 * levelOf(line));
        put("-");
        const std::string_view word = wordOf(line.symbol);
        if (line.symbol != ' ' && !line.kind.empty() && !line.hasValues && line.rule != nullptr) {
            put(" " + std::string(word));
        }
        put(line.kind.empty() ? "" : " " + line.kind);
        put(line.label.empty() ? "" : " " + asCode(line.label));
        put(line.field.empty() ? "" : (line.kind.empty() ? " " : ": ") + line.field);
        put(line.hasValues ? " " + asCode(line.from) + " → " + asCode(line.to) : "");
        if (line.rule != nullptr) {
            const bool isBreaking = line.rule->weight == Weight::breaking;
            put(" (`" + std::string(line.rule->name) + "`, " + (isBreaking ? "**breaking**" : "") +
                std::string(isBreaking ? "" : weightWord(line.rule->weight)) +
                (line.evidence ? ", matched by content)" : ")"));
        }
        put("\n");
    }

    void writeHtmlLine(const Line& line) {
        put("<p class=\"d" + std::to_string(levelOf(line)) + " " + std::string(wordOf(line.symbol)) + " " +
            std::string(line.rule != nullptr ? weightWord(line.rule->weight) : "") + "\"><b>" +
            text::escaped(std::string_view(&line.symbol, 1), html) + "</b>");
        put(line.kind.empty() ? "" : " <i>" + line.kind + "</i>");
        put(line.label.empty() ? "" : " " + text::escaped(line.label, html));
        if (!line.field.empty()) {
            put((line.kind.empty() ? " <i>" : ": <i>") + text::escaped(line.field, html) + "</i>");
        }
        if (line.hasValues) {
            put(" <del>" + text::escaped(line.from, html) + "</del> → <ins>" + text::escaped(line.to, html) + "</ins>");
        }
        if (line.rule != nullptr) {
            put(std::string("<small") + (line.rule->weight == Weight::breaking ? " class=\"breaking\">" : ">") +
                std::string(line.rule->name) + ", " + std::string(weightWord(line.rule->weight)) +
                (line.evidence ? ", matched by content" : "") + "</small>");
        }
        put("</p>\n");
    }

    const Report& report_;
    text::BufferedOutput out_;
};

} // namespace

void writeMarkdown(const Report& report, text::Output& output) {
    MarkupWriter(report, output).writeMarkdown();
}

void writeHtml(const Report& report, text::Output& output) {
    MarkupWriter(report, output).writeHtml();
}

} // namespace diff
