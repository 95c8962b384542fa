#pragma once

#include "diff/changes.h"

#include <span>
#include <string>
#include <string_view>

namespace text {
class Output;
}

namespace diff {

/// What a writer is given.
struct Report {
    const Difference& difference;
    std::string oldFile; ///< as it was named; any bytes
    std::string newFile;
    bool isOldModelFile = true; ///< not a JSON document, whose lines are those of another file
    bool isNewModelFile = true;
    bool isColoured = false; ///< for terminals
};

/// A form of the report: a row of the table that the help and the tests go through.
struct Form {
    std::string_view name;
    std::string_view description; ///< half a sentence for people
    /// Writes it. Throws what the output throws. Time is proportional to what has changed.
    void (*write)(const Report& report, text::Output& output);
};

/// The first is the usual one.
[[nodiscard]] std::span<const Form> forms();
/// Null for a name that no form has.
[[nodiscard]] const Form* findForm(std::string_view name);

void writeText(const Report& report, text::Output& output);
void writeJson(const Report& report, text::Output& output);
void writeMarkdown(const Report& report, text::Output& output);
void writeHtml(const Report& report, text::Output& output);

/// Counts of changes for people, a line for each package.
void writeStatistics(const Report& report, text::Output& output);

} // namespace diff
