#pragma once

#include "petal/import/importModel.h"
#include "petal/output/ModelOutput.h"

#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace petal {

/// What became of a file of many. For `imported`, its model was written; `upToDate`, that had been done before and
/// was left; `notStarted`, it comes after a failure after which nothing more was to be imported.
enum class FileState { imported, upToDate, failed, notStarted };

[[nodiscard]] std::string_view stateWord(FileState state);

/// One file in a report. Texts are bytes: paths need not be UTF-8.
struct FileReport {
    std::string file;
    std::vector<std::string> outputs; // where the model is, in each format; empty where none is written
    std::string ledger;               // where that is; likewise
    FileState state = FileState::notStarted;
    std::string reason; // the word of an outcome, unless that is `success`
    std::string text;   // what went wrong
    int exitStatus = 0; // unless 0, with which the process of the import was ended
    int signal = 0;     // unless 0, which ended it
    ImportResult counts;
};

/// The greatest number in a report.
inline constexpr std::uint64_t mostCounted = std::numeric_limits<std::int64_t>::max();

struct ReportTotals {
    std::uint64_t imported = 0;
    std::uint64_t upToDate = 0;
    std::uint64_t failed = 0;
    std::uint64_t notStarted = 0;
    std::uint64_t objects = 0;
    std::uint64_t dropped = 0;
    std::uint64_t losses = 0;
    std::uint64_t unitsFound = 0;
    std::uint64_t unitsMissing = 0;
    std::uint64_t omitted = 0;
};

/// What is beyond `mostCounted` is that.
[[nodiscard]] ReportTotals totalsOf(const std::vector<FileReport>& files);

/// Writes a report of the files, in their order; does not commit. Throws `std::system_error`.
void writeReport(const std::vector<FileReport>& files, ModelOutput& output);

/// Reads a report. Throws a `Failure` with the outcome `inputNotRead`, also for what is no report.
[[nodiscard]] std::vector<FileReport> readReport(const std::string& path);

/// The files of all reports, each once and in the order of first mention: with what the last report says of it that
/// imported it or failed to, if there is one.
[[nodiscard]] std::vector<FileReport> merged(const std::vector<std::vector<FileReport>>& reports);

} // namespace petal
