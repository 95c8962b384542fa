#include "petal/diff/Ignoring.h"

#include "petal/Failure.h"
#include "petal/import/InputFile.h"
#include "text/ascii.h"

#include <algorithm>
#include <fnmatch.h>

namespace petal {

namespace {

/// How many letters must be changed, added or removed to make one word of the other.
std::size_t distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    for (std::size_t column = 0; column < row.size(); ++column) {
        row[column] = column;
    }
    for (std::size_t line = 1; line <= one.size(); ++line) {
        std::size_t diagonal = row[0];
        row[0] = line;
        for (std::size_t column = 1; column < row.size(); ++column) {
            const std::size_t above = row[column];
            const std::size_t replaced = diagonal + (one[line - 1] == other[column - 1] ? 0 : 1);
            row[column] = std::min({replaced, above + 1, row[column - 1] + 1});
            diagonal = above;
        }
    }
    return row.back();
}

} // namespace

diff::RuleId ruleOrFail(const std::string& name, const std::string& where) {
    if (const std::optional<diff::RuleId> rule = diff::findRule(name)) {
        return *rule;
    }
    constexpr std::size_t longestName = 64;
    const auto* like = std::ranges::min_element(diff::rules(), {}, [&](const diff::Rule& rule) {
                           return distance(name.substr(0, longestName), rule.name);
                       }).base();
    throw Failure(Outcome::wrongUsage, where + ": there is no rule '" + name + "'",
                  "The most similar one is '" + std::string(like->name) + "'; 'petal diff --rules' lists all.");
}

Ignoring::Ignoring(const std::vector<std::string>& rules, const std::vector<std::string>& files) {
    for (const std::string& rule : rules) {
        rows_.push_back({ruleOrFail(rule, "--ignore"), ""});
    }
    std::ranges::for_each(files, [this](const std::string& file) { readFile(file); });
}

void Ignoring::readFile(const std::string& path) {
    const std::string contents = InputFile(path).readRest();
    std::size_t number = 0;
    for (std::size_t at = 0; at < contents.size();) {
        const std::size_t end = std::min(contents.find('\n', at), contents.size());
        const std::string_view line = text::trimmed(std::string_view(contents).substr(at, end - at));
        at = end + 1;
        ++number;
        if (line.empty() || line.starts_with('#')) {
            continue;
        }
        const std::size_t blank = std::min(line.find_first_of(" \t"), line.size());
        const std::string rule(line.substr(0, blank));
        const std::string where = "'" + path + "', line " + std::to_string(number);
        rows_.push_back({rule == "*" ? std::nullopt : std::optional(ruleOrFail(rule, where)),
                         std::string(text::trimmed(line.substr(blank)))});
    }
}

void Ignoring::applyTo(diff::Difference& difference) const {
    if (rows_.empty()) {
        return;
    }
    difference.leaveOut([&](const diff::Change& change) {
        return std::ranges::any_of(rows_, [&](const Row& row) {
            const auto matches = [&](const std::string& name) {
                return ::fnmatch(row.pattern.c_str(), name.c_str(), 0) == 0;
            };
            return (!row.rule || *row.rule == change.rule) &&
                   (row.pattern.empty() || matches(difference.nameOf(change)) ||
                    (change.oldId != diff::noElement && matches(difference.oldName(change))));
        });
    });
}

} // namespace petal
