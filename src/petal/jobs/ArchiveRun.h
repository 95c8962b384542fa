#pragma once

#include "petal/jobs/Console.h"
#include "petal/jobs/ProcessPool.h"
#include "petal/jobs/Sources.h"
#include "petal/log/LogWriter.h"
#include "petal/log/logFormats.h"
#include "petal/report/Report.h"
#include "units/LostUnits.h"
#include "units/SymbolSearch.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace petal {

/// One go through many files: each is imported in a process of its own, several at a time.
///
/// What it leaves behind, outputs and reports, is the same however many run at a time: each file has an output of its
/// own, and after a failure that ends the run nothing is kept of the files behind the one that failed.
class ArchiveRun {
public:
    /// `paths` says for each source where what it gives is to be; `uses` are those of the whole command, and `locator`
    /// finds units. Both must live as long. Throws a `Failure` when the log cannot be opened.
    ArchiveRun(std::vector<Source> sources, std::vector<ImportPaths> paths, const FileUses& uses,
               units::UnitLocator& locator, const ImportRequest& import, const JobsRequest& jobs);

    /// Has the path symbols mapped that must stand for something, and returns them. Called before `run`, if at all.
    /// Throws `Stopped`.
    [[nodiscard]] std::vector<units::SymbolFolder> mapUnitSymbols(units::SymbolSearch& search);

    /// Imports them all; called once. Throws `Stopped`, and a `Failure` when the log could not be written or when it is
    /// not known that the outputs have reached the disk.
    void run();
    /// What became of each source, in their order.
    [[nodiscard]] const std::vector<FileReport>& getFiles() const { return files_; }
    /// What the outputs lack of the models.
    [[nodiscard]] const OmissionCounts& getOmissions() const { return omissions_; }
    /// The units that they lack.
    [[nodiscard]] const units::LostUnits& getLostUnits() const { return lostUnits_; }

private:
    /// An import whose end has not had its effects yet.
    struct Ended {
        ImportEnd end;
        ImportFiles files;
        bool isUpToDate = false; // and there was no import
    };

    void importAll(const StopSignals& signals);
    void startMore(ProcessPool& pool);
    void startImport(std::size_t number, ProcessPool& pool);
    [[nodiscard]] ImportTask taskFor(std::size_t number);
    [[nodiscard]] std::unique_ptr<TemporaryFile> openOutput(const std::string& path);
    void settleEnded();
    void settle(std::size_t number, Ended ended);
    void tellFailure(const std::string& file, const ImportEnd& end);
    void keep(TemporaryFile& file);
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
    std::size_t next_ = 0;               // the first that has not been started
    std::size_t end_;                    // nothing from here on is imported
    std::size_t settled_ = 0;            // how many are
    std::size_t failed_ = 0;
    std::set<std::filesystem::path> folders_; // whose names have yet to reach the disk
};

/// What stands in a report for an import of the file that ended so.
[[nodiscard]] FileReport fileReport(const std::string& file, const ImportPaths& paths, const ImportEnd& end);

} // namespace petal
