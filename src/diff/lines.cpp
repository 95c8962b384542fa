#include "diff/lines.h"

#include "diff/labels.h"
#include "text/escape.h"

#include <algorithm>
#include <map>

namespace diff {

namespace {

constexpr std::string_view none = "(none)";
constexpr std::string_view ellipsis = "…";
constexpr std::size_t longestText = 120; // of a value, in bytes
constexpr std::size_t keptBefore = 20;   // the first difference

std::string textOf(const Value& value) {
    struct Writer {
        std::string operator()(std::monostate /*none*/) const { return ""; }
        std::string operator()(const std::string& text) const { return text; }
        std::string operator()(bool flag) const { return flag ? "yes" : "no"; }
        std::string operator()(std::int64_t number) const { return std::to_string(number); }
        std::string operator()(const std::vector<std::string>& list) const {
            std::string all;
            for (const std::string& one : list) {
                all.append(all.empty() ? "" : ", ").append(one);
            }
            return all;
        }
    };
    return text::printableText(std::visit(Writer(), value));
}

/// The place of a character that is not after `at`.
std::size_t startOfCharacter(std::string_view text, std::size_t at) {
    while (at > 0 && at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U) {
        --at;
    }
    return std::min(at, text.size());
}

std::string cut(std::string_view text, std::size_t from) {
    std::string result(from > 0 ? ellipsis : "");
    const std::string_view rest = text.substr(from);
    if (rest.size() <= longestText) {
        return result.append(rest);
    }
    return result.append(rest.substr(0, startOfCharacter(rest, longestText))).append(ellipsis);
}

/// Cuts two long texts so that their first difference is seen.
void shorten(std::string& from, std::string& to) {
    if (from.size() <= longestText && to.size() <= longestText) {
        return;
    }
    const auto differing = std::ranges::mismatch(from, to);
    const auto first = static_cast<std::size_t>(differing.in1 - from.begin());
    const std::size_t start = first > longestText / 2 ? startOfCharacter(from, first - keptBefore) : 0;
    from = cut(from, start);
    to = cut(to, std::min(start, to.size()));
}

char symbolOf(const Change& change) {
    constexpr std::string_view symbols = "+->>";
    const std::optional<Verb> verb = verbOf(change);
    return verb ? symbols[static_cast<std::size_t>(*verb)] : '~';
}

/// The part of a line that says what has changed.
void describe(const Difference& difference, const Change& change, Line& line) {
    line.symbol = symbolOf(change);
    line.rule = &ruleOf(change.rule);
    if (change.subject == Subject::existence) {
        return;
    }
    if (difference.evidenceOf(change) == Evidence::content) {
        line.evidence = Evidence::content;
    }
    const auto& [from, to] = difference.valuesOf(change);
    line.hasValues = true;
    line.field = text::printableText(difference.fieldOf(change));
    line.from = textOf(from);
    line.to = textOf(to);
    shorten(line.from, line.to);
    line.from = line.from.empty() ? none : line.from;
    line.to = line.to.empty() ? none : line.to;
}

} // namespace

namespace {

/// Whether the line of an added or removed owner says it: its arguments or ends.
bool isInLineOfOwner(const Difference& difference, const TreeNode& node, const TreeNode& owner) {
    const Kind kind =
        (node.newId != noElement ? difference.newModel()[node.newId] : difference.oldModel()[node.oldId]).kind;
    const auto isExistence = [](const TreeNode& one) {
        return one.changes.size() == 1 && one.changes[0].subject == Subject::existence;
    };
    const Kind ownerKind =
        (owner.newId != noElement ? difference.newModel()[owner.newId] : difference.oldModel()[owner.oldId]).kind;
    return ((kind == Kind::argument && ownerKind == Kind::operation) ||
            (kind == Kind::role && ownerKind == Kind::association)) &&
           isExistence(node) && isExistence(owner) && node.depth == owner.depth + 1 &&
           node.changes[0].rule == ruleFor(kind, *verbOf(owner.changes[0]));
}

} // namespace

void forLines(const Difference& difference, const std::function<void(const Line&)>& take) {
    std::vector<Change> sorted;
    TreeNode owner; // the last one that is no argument or role
    for (const TreeNode& node : changeTree(difference, difference.changes(), sorted)) {
        const bool isModel = node.newId == 0;
        if (isModel && node.changes.empty()) {
            continue;
        }
        if (node.depth > owner.depth && owner.depth > 0 && isInLineOfOwner(difference, node, owner)) {
            continue;
        }
        owner = node;
        Line line;
        line.depth = isModel ? 0 : node.depth - 1;
        line.kind = kindWord(node.newId != noElement ? difference.newModel()[node.newId].kind
                                                     : difference.oldModel()[node.oldId].kind);
        line.label = text::printableText(node.newId != noElement ? labelOf(difference.newModel(), node.newId)
                                                                 : labelOf(difference.oldModel(), node.oldId));
        const bool isTyped = line.kind == kindWord(Kind::attribute) || line.kind == kindWord(Kind::argument);
        if (isTyped && !node.changes.empty() && node.changes[0].subject != Subject::existence) {
            line.label = text::printableText(difference.newModel()[node.newId].name); // what changes may be its type
        }
        if (node.changes.size() == 1) {
            describe(difference, node.changes[0], line);
            if (node.changes[0].subject == Subject::name) { // the names say which element it is
                line.label.clear();
                line.field.clear();
            }
            take(line);
            continue;
        }
        line.symbol = node.changes.empty() ? ' ' : '~';
        take(line);
        for (const Change& change : node.changes) {
            Line part;
            part.depth = line.depth + 2;
            describe(difference, change, part);
            take(part);
        }
    }
    for (const Change& change : difference.changes()) {
        if (change.subject == Subject::layout) {
            Line line;
            line.kind = kindWord(Kind::diagram);
            line.label = text::printableText(difference.nameOf(change));
            describe(difference, change, line);
            take(line);
        }
    }
}

std::string summaryText(const Summary& summary) {
    struct Count {
        std::uint64_t number;
        std::string_view word;
    };
    std::string text;
    for (const auto& [number, word] :
         {Count{summary.added, "added"}, Count{summary.removed, "removed"}, Count{summary.renamed, "renamed"},
          Count{summary.moved, "moved"}, Count{summary.changed, "changed"}}) {
        if (number > 0) {
            text.append(text.empty() ? "" : ", ").append(std::to_string(number)).append(" ").append(word);
        }
    }
    if (text.empty()) {
        return "no changes";
    }
    return text + " (" + std::to_string(summary.byWeight[0]) + " breaking)";
}

std::string matchingRemark(const Difference& difference) {
    return difference.matching().isByName
               ? "elements are matched by name, as the models share most names and hardly any quid"
               : "";
}

std::string title(const Report& report) {
    return text::printableText(report.oldFile) + " → " + text::printableText(report.newFile);
}

std::vector<PackageCount> countByPackage(const Difference& difference) {
    std::vector<PackageCount> counts;
    std::map<std::string, std::size_t, std::less<>> places;
    std::pair<const Model*, ElementId> last{nullptr, noElement};
    std::size_t lastPlace = 0;
    for (const Change& change : difference.changes()) {
        const bool isNew = change.newId != noElement;
        const Model& model = isNew ? difference.newModel() : difference.oldModel();
        ElementId package = noElement;
        if (change.subject != Subject::layout) {
            package = isNew ? change.newId : change.oldId;
            while (package != 0 && model[package].kind != Kind::package) {
                package = model[package].owner;
            }
        }
        if (counts.empty() || last != std::pair(&model, package)) {
            last = {&model, package};
            const std::string name = package == noElement ? "(drawings)"
                                     : package == 0       ? "(model)"
                                                          : text::printableText(qualifiedName(model, package));
            const auto [place, isFirst] = places.try_emplace(name, counts.size());
            if (isFirst) {
                counts.push_back({name, {}});
            }
            lastPlace = place->second;
        }
        counts[lastPlace].summary.add(change);
    }
    return counts;
}

} // namespace diff
