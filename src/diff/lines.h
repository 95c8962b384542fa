#pragma once

#include "diff/ChangeTree.h"
#include "diff/writers.h"

#include <functional>
#include <optional>
#include <string>

namespace diff {

/// A line of a report for people: an element, a change of it, or both. Texts are on one line, printable and in UTF-8.
struct Line {
    std::size_t depth = 0;
    char symbol = ' '; ///< "+", "-", "~", ">", or a blank for an element that only has others in it
    std::string kind;  ///< of the element; empty if a line above names it
    std::string label; ///< its name, with its type or ends; empty likewise
    std::string field; ///< what has changed; empty for none, and for a name in place of the label
    bool hasValues = false;
    std::string from; ///< its values
    std::string to;
    const Rule* rule = nullptr;       ///< null for a line without a change
    std::optional<Evidence> evidence; ///< unless it is the quid or the name
};

/// Calls `take` with each line in the order of the tree.
void forLines(const Difference& difference, const std::function<void(const Line&)>& take);

/// "3 added, 1 renamed, 2 changed (4 breaking)", or "no changes".
[[nodiscard]] std::string summaryText(const Summary& summary);
/// What must be said of the matching; empty for nothing.
[[nodiscard]] std::string matchingRemark(const Difference& difference);
/// The files, in one line.
[[nodiscard]] std::string title(const Report& report);

/// Counts of the changes in a package, without those in packages within it.
struct PackageCount {
    std::string name; ///< qualified
    Summary summary;
};
[[nodiscard]] std::vector<PackageCount> countByPackage(const Difference& difference);

} // namespace diff
