#pragma once

#include "diff/changes.h"

#include <optional>
#include <string>
#include <vector>

namespace petal {

/// The rule of that name. Throws a `Failure` with the outcome `wrongUsage` that names rules like it; `where` says where
/// the name stands.
[[nodiscard]] diff::RuleId ruleOrFail(const std::string& name, const std::string& where);

/// The changes that are not reported.
class Ignoring {
public:
    /// Names of rules, and files with lines of a rule and a pattern. Throws a `Failure` for rules that do not exist and
    /// for files that cannot be read.
    Ignoring(const std::vector<std::string>& rules, const std::vector<std::string>& files);

    void applyTo(diff::Difference& difference) const;

private:
    struct Row {
        std::optional<diff::RuleId> rule; // nothing: any
        std::string pattern;              // of qualified names; empty: any
    };

    void readFile(const std::string& path);

    std::vector<Row> rows_;
};

} // namespace petal
