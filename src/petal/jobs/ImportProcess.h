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
    /// to them: only their owner replaces or removes a file, also if the import crashes.
    ImportFiles files;
    /// Callbacks for the lines that the import writes to standard error and standard output, and to its log. If one is
    /// empty, the import uses the streams of this process, or the log of the request.
    Lines::Taker errors;
    Lines::Taker log;
};

/// An import in a forked child process. The destructor ends the child, and so does the end of this process. This
/// process must have one thread.
class ImportProcess {
public:
    using Clock = std::chrono::steady_clock;

    /// Starts the import. `siblings` are the imports that run already; the child closes their descriptors. The child
    /// ends after the import. Throws `std::system_error`.
    ImportProcess(ImportTask task, const Limits& limits, std::span<const std::unique_ptr<ImportProcess>> siblings);
    ImportProcess(const ImportProcess&) = delete;
    ImportProcess& operator=(const ImportProcess&) = delete;
    ~ImportProcess();

    /// Appends the descriptors to wait for.
    void addTo(std::vector<pollfd>& waiting) const;
    /// Takes the bytes that have arrived, without waiting. Returns whether the child has closed all channels.
    bool takeArrived();
    /// The time at which the time limit is reached; nothing without a limit.
    [[nodiscard]] const std::optional<Clock::time_point>& getDeadline() const { return deadline_; }
    /// Ends the import because its time limit is reached.
    void timeOut();
    /// Waits for the end of the child, after `takeArrived` has returned true. Called once.
    ImportEnd finish();
    /// Gives the task's files to the caller, who keeps or removes them.
    [[nodiscard]] ImportFiles takeFiles() { return std::move(task_.files); }

private:
    /// A pipe from the import.
    struct Channel {
        Descriptor reading;
        Descriptor writing; // of the child; closed here after its start
        Lines lines;
    };
    enum : std::size_t { result, errors, log, channelCount };

    void openChannels();
    void closeFiles();
    [[nodiscard]] ImportEnd endOfProcess(int status) const;

    ImportTask task_;
    Limits limits_;
    std::array<Channel, channelCount> channels_;
    std::string message_; // the bytes from the channel `result`
    pid_t process_ = -1;  // -1 after its end
    bool timedOut_ = false;
    std::optional<Clock::time_point> deadline_;
};

} // namespace petal
