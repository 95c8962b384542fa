#pragma once

#include "petal/ModelOutput.h"
#include "petal/report/FileReport.h"

#include <string>
#include <vector>

namespace petal {

/// Writes a report of the files, in their order; does not commit. Throws `std::system_error`.
void writeReport(const std::vector<FileReport>& files, ModelOutput& output);

/// Reads a report. Throws a `Failure` with the outcome `inputNotRead`, also for what is no report.
[[nodiscard]] std::vector<FileReport> readReport(const std::string& path);

/// The files of all reports, each once and in the order of first mention: with what the last report says of it that
/// imported it or failed to, if there is one.
[[nodiscard]] std::vector<FileReport> merged(const std::vector<std::vector<FileReport>>& reports);

} // namespace petal
