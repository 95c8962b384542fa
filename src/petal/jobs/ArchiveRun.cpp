#include "petal/jobs/ArchiveRun.h"

#include "petal/Failure.h"
#include "petal/jobs/ImportProcess.h"
#include "petal/jobs/ShareOfFiles.h"
#include "petal/jobs/UnitSurvey.h"
#include "petal/jobs/plan.h"
#include "petal/output/ModelOutput.h"
#include "petal/output/fileFailure.h"

#include <algorithm>
#include <cerrno>
#include <sys/resource.h>

namespace petal {

namespace {

constexpr auto progressInterval = std::chrono::milliseconds(250);

// Outputs that are brought to the disk together.
constexpr std::size_t mostInBatch = 256;
constexpr auto oldestInBatch = std::chrono::seconds(1);

constexpr std::size_t sharesForEach = 4; // processes per parallel one, at least, if there are enough files

/// The number of files to have open for one purpose of two, if `wanted` would be enough.
std::size_t descriptorsFor(std::size_t wanted) {
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    return std::min<rlim_t>(wanted, limit.rlim_cur / 3);
}

} // namespace

FileReport fileReport(const std::string& file, const ImportPaths& paths, const ImportEnd& end) {
    FileReport report;
    report.file = file;
    report.state = end.isDone() ? FileState::imported : FileState::failed;
    if (end.isDone()) {
        report.outputs = paths.models;
        report.ledger = paths.ledger;
    }
    report.reason = end.outcome != Outcome::success ? exitStatus(end.outcome).word : "";
    report.text = end.text;
    report.exitStatus = end.exitStatus;
    report.signal = end.signal;
    report.counts = end.result;
    return report;
}

ArchiveRun::ArchiveRun(std::vector<Source> sources, std::vector<ImportPaths> paths, const FileUses& uses,
                       units::UnitLocator& locator, const ImportRequest& import, const JobsRequest& jobs)
    : sources_(std::move(sources)), paths_(std::move(paths)), uses_(uses), locator_(locator), import_(import),
      jobs_(jobs), logFormat_(*findLogFormat(import.logFormat)), console_(!jobs.quiet), files_(sources_.size()),
      end_(sources_.size()), mostInBatch_(descriptorsFor(mostInBatch)) {
    if (import.log && *import.log != "-") {
        log_.emplace(*import.log);
    }
    for (std::size_t number = 0; number < files_.size(); ++number) {
        files_[number].file = sources_[number].path; // not started yet
    }
}

std::vector<units::SymbolFolder> ArchiveRun::mapUnitSymbols(units::SymbolSearch& search) {
    const StopSignals signals;
    UnitSurvey survey(sources_, import_, uses_, locator_, jobs_, signals);
    return units::mapSymbols(locator_, search, [&] { return survey.survey(); });
}

void ArchiveRun::run() {
    const StopSignals signals;
    try {
        importAll(signals);
    } catch (...) {
        ended_.clear(); // removes the files while further signals are held back
        keepBatch();
        throw;
    }
    console_.clear();
    finish();
}

void ArchiveRun::importAll(const StopSignals& signals) {
    ProcessPool pool(limitsOf(jobs_), signals);
    for (;;) {
        startMore(pool);
        settleEnded();
        if (isBatchDue()) {
            keepBatch(); // while the processes go on
        }
        if (pool.getCount() == 0 && next_ >= end_) {
            break;
        }
        for (EndedImport& ended : pool.wait(progressInterval)) {
            ended_[ended.number] = {std::move(ended.end), std::move(ended.files)};
        }
        settleEnded();
        if (end_ < sources_.size()) {
            pool.dropAfter(end_);
        }
        console_.show({settled_, sources_.size(), failed_});
    }
    ended_.clear(); // the rest is after a failure
    keepBatch();
}

void ArchiveRun::startMore(ProcessPool& pool) {
    while (next_ < end_ && pool.getCount() < static_cast<std::size_t>(jobs_.parallel)) {
        startShare(pool);
    }
}

void ArchiveRun::startShare(ProcessPool& pool) {
    std::vector<NumberedTask> share = nextShare();
    if (share.empty()) {
        return;
    }
    const std::size_t first = share.front().number;
    const std::size_t last = share.back().number;
    try {
        pool.start(std::move(share));
    } catch (const std::system_error& error) {
        for (std::size_t number = first; number <= last; ++number) {
            ended_.try_emplace(number, Ended{endWith(std::make_exception_ptr(noProcess(error))), {}});
        }
    }
}

/// The next imports for one process. Those that are not needed, or cannot be started, end at once.
std::vector<NumberedTask> ArchiveRun::nextShare() {
    std::vector<NumberedTask> share;
    ShareOfFiles files;
    for (const std::size_t most = mostInShare(); next_ < end_ && share.size() < most; ++next_) {
        const std::string& file = sources_[next_].path;
        if (jobs_.resume && isUpToDate(file, paths_[next_])) {
            ended_[next_] = {.end = {}, .files = {}, .isUpToDate = true};
            continue;
        }
        if (!files.take(file, share.empty())) {
            break;
        }
        if (std::optional<ImportTask> task = taskFor(next_)) {
            share.push_back({next_, *std::move(task)});
        }
    }
    return share;
}

std::size_t ArchiveRun::mostInShare() const {
    const auto parallel = static_cast<std::size_t>(jobs_.parallel);
    const std::size_t outputs = import_.destinations.size() + (import_.ledger ? 1 : 0);
    const std::size_t files = std::max(parallel * outputs, std::size_t{1}); // of one import in each process
    const std::size_t most = descriptorsFor(mostFilesInShare * files) / files;
    const std::size_t share = (end_ - next_) / (parallel * sharesForEach);
    return std::clamp(share, std::size_t{1}, std::clamp(most, std::size_t{1}, mostFilesInShare));
}

/// The task of an import; none if it cannot be started.
std::optional<ImportTask> ArchiveRun::taskFor(std::size_t number) {
    try {
        if (!sources_[number].unreadable.empty()) {
            throw Failure(Outcome::inputNotRead, sources_[number].unreadable, "");
        }
        return makeTask(number);
    } catch (const Failure&) {
        ended_[number] = {endWith(std::current_exception()), {}};
        return std::nullopt;
    }
}

std::unique_ptr<TemporaryFile> ArchiveRun::openOutput(const std::string& path) {
    try {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        const auto file = fileToReplace(path);
        if (!file) {
            throw std::system_error(std::filesystem::is_directory(path) ? EISDIR : EEXIST, std::generic_category());
        }
        removeAbandoned(file->parent_path());
        fileSystems_.watch(file->parent_path());
        return std::make_unique<TemporaryFile>(*file, TemporaryFile::Signal::leaves);
    } catch (const std::system_error& error) {
        throw outputFailure(outputName(path), error);
    }
}

ImportTask ArchiveRun::makeTask(std::size_t number) {
    ImportTask task{.request = import_, .uses = &uses_, .locator = &locator_, .files = {}, .errors = {}, .log = {}};
    const std::string& file = sources_[number].path;
    task.request.file = file;
    for (std::size_t index = 0; index < paths_[number].models.size(); ++index) {
        task.request.destinations[index].path = paths_[number].models[index];
        task.files.models.push_back(openOutput(paths_[number].models[index]));
    }
    if (const std::string& ledger = paths_[number].ledger; !ledger.empty()) {
        task.request.ledger = ledger;
        task.files.ledger = openOutput(ledger);
    }
    task.errors = [this, &file](std::string_view line) { console_.write(findLogFormat("text")->lineOf(line, file)); };
    task.log = [this, &file](std::string_view line) {
        const std::string named = logFormat_.lineOf(line, file);
        log_ ? log_->write(named) : console_.write(named);
    };
    return task;
}

void ArchiveRun::settleEnded() {
    while (!ended_.empty()) {
        const auto first = ended_.begin();
        const bool isItsTurn = first->first == settled_ && first->first < end_;
        if (jobs_.failFast && !isItsTurn) {
            return;
        }
        auto node = ended_.extract(first);
        settle(node.key(), std::move(node.mapped()));
    }
}

void ArchiveRun::settle(std::size_t number, Ended ended) {
    ++settled_;
    if (jobs_.failFast && !ended.end.isDone()) {
        keepBatch(); // an earlier import may fail yet
        if (number >= end_) {
            return;
        }
    }
    FileReport& report = files_[number];
    if (ended.isUpToDate) {
        report.state = FileState::upToDate;
        report.outputs = paths_[number].models;
        report.ledger = paths_[number].ledger;
        return;
    }
    report = fileReport(sources_[number].path, paths_[number], ended.end);
    omissions_.add(ended.end.omissions);
    std::ranges::for_each(ended.end.losses, [this](const units::ModelLosses& losses) { lostUnits_.add(losses); });
    if (!ended.end.isDone()) {
        fail(number, ended.end);
        return;
    }
    if (const std::size_t files = ended.files.inOrder().size(); files > 0) {
        batchStart_ = batch_.empty() ? std::chrono::steady_clock::now() : batchStart_;
        batchFiles_ += files;
        batch_.push_back({number, std::move(ended.files)});
    }
}

void ArchiveRun::fail(std::size_t number, const ImportEnd& end) {
    ++failed_;
    const std::string name = sources_[number].path + ": ";
    console_.write(failureLines(name + end.text, end.advice.empty() ? "" : name + end.advice));
    end_ = jobs_.failFast ? number : end_;
}

bool ArchiveRun::isBatchDue() const {
    return batchFiles_ >= mostInBatch_ ||
           (!batch_.empty() && std::chrono::steady_clock::now() - batchStart_ > oldestInBatch);
}

/// Brings the finished outputs to the disk and puts them in place. If that fails for one, its import has failed.
void ArchiveRun::keepBatch() {
    std::vector<Finished> batch = std::exchange(batch_, {});
    batchFiles_ = 0;
    std::vector<TemporaryFile*> files;
    for (const Finished& finished : batch) {
        std::ranges::copy(finished.files.inOrder(), std::back_inserter(files));
    }
    const std::vector<std::error_code> errors = fileSystems_.sync({files.data(), files.size()});
    auto first = errors.begin(); // of an import
    for (const Finished& finished : batch) {
        FileReport& report = files_[finished.number];
        if (finished.number >= end_) { // after a failure, with --fail-fast
            report = FileReport();
            report.file = sources_[finished.number].path;
            continue;
        }
        auto error = first;
        first += static_cast<std::ptrdiff_t>(finished.files.inOrder().size());
        try {
            for (TemporaryFile* file : finished.files.inOrder()) {
                keep(*file, *error++);
            }
        } catch (const Failure&) {
            const ImportEnd end = endWith(std::current_exception());
            report = fileReport(sources_[finished.number].path, paths_[finished.number], end);
            fail(finished.number, end);
        }
    }
}

void ArchiveRun::keep(TemporaryFile& file, const std::error_code& error) {
    try {
        if (error) {
            throw std::system_error(error);
        }
        file.takePlace();
    } catch (const std::system_error& failure) {
        throw outputFailure(outputName(file.getTarget()), failure);
    }
    folders_.insert(file.getFolder());
}

void ArchiveRun::finish() {
    for (const std::filesystem::path& folder : folders_) {
        try {
            syncFolder(folder);
        } catch (const std::system_error& error) {
            throw outputFailure("the folder '" + folder.string() + "'", error);
        }
    }
    if (log_) {
        log_->close();
    }
}

} // namespace petal
