#pragma once

#include "petal/jobs/Console.h"
#include "petal/jobs/ProcessPool.h"
#include "petal/jobs/Sources.h"
#include "petal/log/LogWriter.h"
#include "petal/log/logFormats.h"
#include "petal/output/FileSystems.h"
#include "petal/report/Report.h"
#include "units/LostUnits.h"
#include "units/SymbolSearch.h"

#include <chrono>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace petal {

/// Imports many files, several in parallel, in processes that import up to 32 small files one after the other (see
/// `ImportProcess`).
///
/// Outputs and reports do not depend on the number of parallel imports: every file has separate outputs, and after a
/// failure that ends the run, nothing is kept of the files after the one that failed. This process must have one
/// thread.
class ArchiveRun {
public:
    /// `paths` has the outputs of each source, `uses` the files of the whole command; `locator` finds units. `uses` and
    /// `locator` must live as long. Throws a `Failure` when the log cannot be opened.
    ArchiveRun(std::vector<Source> sources, std::vector<ImportPaths> paths, const FileUses& uses,
               units::UnitLocator& locator, const ImportRequest& import, const JobsRequest& jobs);

    /// Maps the path symbols whose folders can be inferred (`units::mapSymbols`), and returns them. If called, then
    /// before `run`. Throws `Stopped`, and `std::system_error` when no process can be started.
    [[nodiscard]] std::vector<units::SymbolFolder> mapUnitSymbols(units::SymbolSearch& search);

    /// Imports all files; called once. Throws `Stopped`, and a `Failure` when the log cannot be written or the outputs
    /// cannot be brought to the disk. A failed import is not thrown: `getFiles` has it.
    void run();
    /// The outcomes of the sources, in their order.
    [[nodiscard]] const std::vector<FileReport>& getFiles() const { return files_; }
    /// The parts of the models that the outputs omit.
    [[nodiscard]] const OmissionCounts& getOmissions() const { return omissions_; }
    /// The units that are missing from the models.
    [[nodiscard]] const units::LostUnits& getLostUnits() const { return lostUnits_; }

private:
    /// An import that has ended and is not settled yet.
    struct Ended {
        ImportEnd end;
        ImportFiles files;
        bool isUpToDate = false; // there was no import
    };
    /// Outputs that are complete but not in place yet.
    struct Finished {
        std::size_t number;
        ImportFiles files;
    };

    void importAll(const StopSignals& signals);
    void startMore(ProcessPool& pool);
    void startShare(ProcessPool& pool);
    [[nodiscard]] std::vector<NumberedTask> nextShare();
    [[nodiscard]] std::size_t mostInShare() const;
    [[nodiscard]] std::optional<ImportTask> taskFor(std::size_t number);
    [[nodiscard]] ImportTask makeTask(std::size_t number);
    [[nodiscard]] std::unique_ptr<TemporaryFile> openOutput(const std::string& path);
    void settleEnded();
    void settle(std::size_t number, Ended ended);
    void fail(std::size_t number, const ImportEnd& end);
    [[nodiscard]] bool isBatchDue() const;
    void keepBatch();
    void keep(TemporaryFile& file, const std::error_code& error);
    void finish();

    std::vector<Source> sources_;
    std::vector<ImportPaths> paths_;
    const FileUses& uses_;
    units::UnitLocator& locator_;
    ImportRequest import_;
    JobsRequest jobs_;
    const LogFormat& logFormat_;
    std::optional<LogFile> log_;
    Console console_;

    std::vector<FileReport> files_;
    OmissionCounts omissions_;
    units::LostUnits lostUnits_;
    std::map<std::size_t, Ended> ended_; // by number
    std::size_t next_ = 0;               // the first source that has not been started
    std::size_t end_;                    // sources from here on are not imported
    std::size_t settled_ = 0;            // the number of settled sources
    std::size_t failed_ = 0;
    FileSystems fileSystems_;
    std::vector<Finished> batch_; // is brought to the disk together
    std::size_t mostInBatch_;
    std::size_t batchFiles_ = 0;
    std::chrono::steady_clock::time_point batchStart_;
    std::set<std::filesystem::path> folders_; // with new names that must be brought to the disk
};

/// The entry of a report for an import of the file that ended with `end`.
[[nodiscard]] FileReport fileReport(const std::string& file, const ImportPaths& paths, const ImportEnd& end);

} // namespace petal
