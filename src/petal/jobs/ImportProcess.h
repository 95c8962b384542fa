#pragma once

#include "petal/Request.h"
#include "petal/import/importModel.h"
#include "petal/jobs/ImportEnd.h"
#include "petal/output/Descriptor.h"
#include "petal/output/FileUses.h"
#include "petal/output/TemporaryFile.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <poll.h>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace petal {

/// The limits of one import and its process.
struct Limits {
    std::optional<std::chrono::milliseconds> time;
    std::optional<std::uint64_t> memory; // bytes of writable memory
};

[[nodiscard]] inline Limits limitsOf(const JobsRequest& jobs) {
    Limits limits{.time = std::nullopt, .memory = jobs.maxMemory};
    if (jobs.timeout) {
        limits.time = std::chrono::ceil<std::chrono::milliseconds>(std::chrono::duration<double>(*jobs.timeout));
    }
    return limits;
}

/// Splits bytes that arrive in pieces into lines, and passes on each complete line with its line end. Lines longer than
/// a megabyte are split.
class Lines {
public:
    /// Called with each line, which is valid during the call only.
    using Taker = std::function<void(std::string_view line)>;

    /// With an empty taker, `add` must not be called.
    explicit Lines(Taker taker = {}) : taker_(std::move(taker)) {}

    [[nodiscard]] bool isTaken() const { return static_cast<bool>(taker_); }

    void add(std::string_view bytes);
    /// Passes on the last line, if it is incomplete, with a line end.
    void end();
    /// The last line that was passed on, without its line end; empty if there was none.
    [[nodiscard]] const std::string& getLast() const { return last_; }

private:
    void take(std::string_view line);

    Taker taker_;
    std::string begun_;
    std::string last_;
};

/// The paths of the outputs of an import; empty for outputs that are not kept in files.
struct ImportPaths {
    std::vector<std::string> models; // of the destinations, in their order, then of the files beside them
    std::string ledger;
};

/// The files that a child process writes and its parent keeps; null if there is none.
struct ImportFiles {
    std::vector<std::unique_ptr<TemporaryFile>> models; // in the same order
    std::unique_ptr<TemporaryFile> ledger;

    /// All files, in the order in which they must be put in place: the ledger is the last, so that its model exists.
    [[nodiscard]] std::vector<TemporaryFile*> inOrder() const {
        std::vector<TemporaryFile*> files;
        std::ranges::transform(models, std::back_inserter(files), &std::unique_ptr<TemporaryFile>::get);
        files.push_back(ledger.get());
        std::erase(files, nullptr);
        return files;
    }
};

/// The arguments of an import in a child process.
struct ImportTask {
    ImportRequest request;
    const FileUses* uses;        // of the whole command; must live as long
    units::UnitLocator* locator; // likewise; the child has a copy, and lists no folder again that an earlier one listed
    std::function<ImportResult(const ImportRequest&, const ImportContext&)> run = importModel;
    /// The files to write instead of the request's outputs and ledger. This process owns them and the child only writes
    /// to them: only their owner brings them to the disk, and replaces or removes a file, also if the import crashes.
    ImportFiles files;
    /// Callbacks for the lines that the import writes to standard error and standard output, and to its log. If one is
    /// empty, the import uses the streams of this process, or the log of the request.
    Lines::Taker errors;
    Lines::Taker log;
};

/// An import to run, with the number by which its starter knows it.
struct NumberedTask {
    std::size_t number;
    ImportTask task;
};

/// An import that has ended, with the number that it was started with.
struct EndedImport {
    std::size_t number;
    ImportEnd end;
    ImportFiles files; // the task's
};

/// Imports in a forked child process, one after the other. The destructor ends the child, and so does the end of this
/// process. This process must have one thread.
///
/// No import can harm another: the child ends after an import that fails or changes the state of the process, and an
/// import that fails after others in the same child does not count; `finish` returns it to be run again. Therefore the
/// lines of each import but the first are passed on when it has succeeded.
class ImportProcess {
public:
    using Clock = std::chrono::steady_clock;

    /// Starts the imports. `siblings` are the processes that run already; the child closes their descriptors. The child
    /// ends after the last import. Throws `std::system_error`.
    ImportProcess(std::vector<NumberedTask> tasks, const Limits& limits,
                  std::span<const std::unique_ptr<ImportProcess>> siblings);
    ImportProcess(const ImportProcess&) = delete;
    ImportProcess& operator=(const ImportProcess&) = delete;
    ~ImportProcess();

    /// Appends the descriptors to wait for.
    void addTo(std::vector<pollfd>& waiting) const;
    /// Takes bytes that have arrived, and appends the imports that have ended. `waited` has what `addTo` appended, and
    /// what poll said of it. Returns whether nothing more will arrive.
    [[nodiscard]] bool takeArrived(std::span<const pollfd> waited, std::vector<EndedImport>& ended);
    /// The time at which the time limit of the current import is reached; nothing without a limit.
    [[nodiscard]] const std::optional<Clock::time_point>& getDeadline() const { return deadline_; }
    /// Ends the child because the time limit is reached.
    void timeOut();
    /// Waits for the end of the child, after `takeArrived` has returned true, and appends the imports that have ended.
    /// Returns the others, for another process; they are fewer than this process was given. Called once.
    [[nodiscard]] std::vector<NumberedTask> finish(std::vector<EndedImport>& ended);
    /// Drops the imports with a higher number. Returns whether there are others that have not ended.
    bool dropAfter(std::size_t number);

private:
    /// A pipe from the child.
    struct Channel {
        Descriptor reading;
        Descriptor writing; // of the child; closed here after its start
        Lines lines;
        std::size_t import = 0; // the one that is writing to it
    };
    enum : std::size_t { result, errors, log, channelCount };
    struct HeldLine {
        std::size_t channel;
        std::string line;
    };
    struct Import {
        NumberedTask given;
        ImportMessage message;
        std::vector<HeldLine> held;
    };

    [[nodiscard]] static const Lines::Taker& takerOf(const ImportTask& task, std::size_t channel);
    void openChannels();
    void closeFiles();
    [[noreturn]] void beChild(pid_t parent);
    void startClock();
    void takeResult(std::string_view bytes);
    void takeLine(std::size_t channel, std::string_view line);
    void passOn(std::size_t channel, std::string_view line);
    [[nodiscard]] bool hasEnded(std::size_t import) const;
    void settle(std::vector<EndedImport>& ended);
    void append(ImportEnd end, std::vector<EndedImport>& ended);
    [[nodiscard]] ImportEnd endOfProcess(int status) const;

    std::vector<Import> imports_;
    std::size_t current_ = 0; // the first import that has not ended
    Limits limits_;
    std::array<Channel, channelCount> channels_;
    std::string marker_;        // a line that the child writes to `errors` and `log` after each import
    std::string message_;       // bytes from `result` that are not a complete part yet
    std::size_t heldBytes_ = 0; // of the current import and later ones
    pid_t process_ = -1;        // -1 after its end
    bool timedOut_ = false;
    bool isCut_ = false; // imports that the child has been given were dropped
    std::optional<Clock::time_point> deadline_;
};

} // namespace petal
