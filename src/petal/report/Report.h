#pragma once

#include "petal/import/importModel.h"
#include "petal/output/ModelOutput.h"

#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace petal {

/// The outcome of one of many files. `imported`: its model was written. `upToDate`: its outputs were complete already.
/// `notStarted`: with --fail-fast, an earlier file failed.
enum class FileState { imported, upToDate, failed, notStarted };

[[nodiscard]] std::string_view stateWord(FileState state);

/// One file in a report. Texts are bytes: paths need not be UTF-8.
struct FileReport {
    std::string file;
    std::vector<std::string> outputs; // the model in each format; empty if none is written
    std::string ledger;               // likewise
    FileState state = FileState::notStarted;
    std::string reason; // the word of an outcome, unless that is `success`
    std::string text;   // the failure, for people
    int exitStatus = 0; // unless 0, the status with which the bridge ended the process
    int signal = 0;     // unless 0, the signal that ended the process
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

/// Adds up the files. Totals do not exceed `mostCounted`.
[[nodiscard]] ReportTotals totalsOf(const std::vector<FileReport>& files);

/// Writes a report of the files, in their order, without a commit. Throws `std::system_error`.
void writeReport(const std::vector<FileReport>& files, ModelOutput& output);

/// Reads a report. Throws a `Failure` with the outcome `inputNotRead`, also if the file is not a report.
[[nodiscard]] std::vector<FileReport> readReport(const std::string& path);

/// The files of all reports, each once, in the order of first mention. Of several entries of a file, the last one that
/// is `imported` or `failed` wins; if there is none, the last entry.
[[nodiscard]] std::vector<FileReport> merged(const std::vector<std::vector<FileReport>>& reports);

} // namespace petal
