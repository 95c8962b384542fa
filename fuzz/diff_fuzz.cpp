// Two JSON documents, a line "----" between them, are compared or refused, whatever they hold. A model against itself
// has no change; exchanged, the models have the mirrored changes; the sums hold; every form is a safe text.

#include "diff/writers.h"
#include "require.h"
#include "text/Output.h"
#include "textFault.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>

namespace {

class MemoryOutput final : public text::Output {
public:
    void write(std::string_view bytes) override { text += bytes; }

    std::string text;
};

std::optional<diff::Model> modelIn(std::string_view bytes) {
    try {
        return diff::readModel(std::string(bytes));
    } catch (const diff::BadDocument& error) {
        fuzz::requireNone(fuzz::textFault(error.what()));
        return std::nullopt;
    }
}

using Key = std::tuple<std::string_view, diff::ElementId, diff::ElementId, diff::FieldId>;

/// How often each change is there; `isMirrored`: as the exchanged models would have it.
std::map<Key, int> changesOf(const diff::Difference& difference, bool isMirrored) {
    std::map<Key, int> counts;
    for (const diff::Change& change : difference.changes()) {
        const diff::Rule& rule = diff::ruleOf(change.rule);
        ++counts[isMirrored ? Key(rule.mirror, change.newId, change.oldId, change.field)
                            : Key(rule.name, change.oldId, change.newId, change.field)];
    }
    return counts;
}

void checkForms(const diff::Difference& difference) {
    const diff::Report report{.difference = difference, .oldFile = "a\n\x1b", .newFile = "b\xff"};
    for (const diff::Form& form : diff::forms()) {
        MemoryOutput output;
        form.write(report, output);
        fuzz::requireNone(form.name == "json" ? fuzz::jsonFault(output.text) : fuzz::textFault(output.text));
    }
    MemoryOutput statistics;
    diff::writeStatistics(report, statistics);
    fuzz::requireNone(fuzz::textFault(statistics.text));
}

void compare(const diff::Model& one, const diff::Model& other) {
    constexpr diff::Shown all{.layout = true, .order = true, .quids = true, .encoding = true, .units = true};
    for (const diff::Renames renames : {diff::Renames::content, diff::Renames::quid, diff::Renames::no}) {
        fuzz::require(diff::Difference(one, one, renames, all).changes().empty(), "a model differs from itself");
        const diff::Difference forth(one, other, renames, all);
        const diff::Difference back(other, one, renames, all);
        fuzz::require(changesOf(forth, true) == changesOf(back, false), "exchanged models have other changes");
        const diff::Summary sums = diff::summaryOf(forth);
        fuzz::require(one.count() + sums.added == other.count() + sums.removed, "the sums do not hold");
        checkForms(forth);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const std::size_t middle = std::min(text.find("\n----\n"), text.size());
    const std::optional<diff::Model> one = modelIn(text.substr(0, middle));
    const std::optional<diff::Model> other = modelIn(text.substr(std::min(middle + 6, text.size())));
    if (one && other) {
        compare(*one, *other);
    } else if (one) {
        compare(*one, *one);
    }
    return 0;
}
