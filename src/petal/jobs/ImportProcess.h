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

/// What one import may take. Holds for the process that it runs in.
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

/// Cuts bytes that arrive in pieces into lines and hands each on when it is whole, its end included. What has no line's
/// end for a megabyte is cut there.
class Lines {
public:
    /// Called with each line, which lives only during the call.
    using Taker = std::function<void(std::string_view line)>;

    /// With an empty taker nobody may add.
    explicit Lines(Taker taker = {}) : taker_(std::move(taker)) {}

    [[nodiscard]] bool isTaken() const { return static_cast<bool>(taker_); }

    void add(std::string_view bytes);
    /// Hands on the last line if it has no end, with one.
    void end();
    /// The last line handed on, without its end; empty when there was none.
    [[nodiscard]] const std::string& getLast() const { return last_; }

private:
    void take(std::string_view line);

    Taker taker_;
    std::string begun_;
    std::string last_;
};

/// Where what an import makes is to be; empty where it is not to be kept.
struct ImportPaths {
    std::vector<std::string> models; // of the destinations, in their order, then of the files beside them
    std::string ledger;
};

/// The files that an import in a process of its own writes for its parent to keep; null where it has none.
struct ImportFiles {
    std::vector<std::unique_ptr<TemporaryFile>> models; // in the same order
    std::unique_ptr<TemporaryFile> ledger;

    /// Those that there are, in the order in which they take their places: where there is a ledger, so is its model.
    [[nodiscard]] std::vector<TemporaryFile*> inOrder() const {
        std::vector<TemporaryFile*> files;
        std::ranges::transform(models, std::back_inserter(files), &std::unique_ptr<TemporaryFile>::get);
        files.push_back(ledger.get());
        std::erase(files, nullptr);
        return files;
    }
};

/// What an import in a process of its own is to do.
struct ImportTask {
    ImportRequest request;
    const FileUses* uses;        // of the whole command; must live as long
    units::UnitLocator* locator; // likewise; what the import finds with it, it has for itself
    std::function<ImportResult(const ImportRequest&, const ImportContext&)> run = importModel;
    /// What stands in place of the request's output and ledger. They are this process's: the import only writes to
    /// them, so whatever becomes of the import, nobody but their owner replaces or removes a file.
    ImportFiles files;
    /// Who takes the lines that the import writes to standard error, standard output included, and to its log. When one
    /// is empty, the import has that stream of this process, or the log that the request names.
    Lines::Taker errors;
    Lines::Taker log;
};

/// An import in a forked process, which needs no program to be loaded again. This process must have one thread.
///
/// The import ends with this object, and with this process.
class ImportProcess {
public:
    using Clock = std::chrono::steady_clock;

    /// Starts it. `siblings` are the imports under way, whose files are none of its business. The process ends by
    /// itself when the import does. Throws `std::system_error`.
    ImportProcess(ImportTask task, const Limits& limits, std::span<const std::unique_ptr<ImportProcess>> siblings);
    ImportProcess(const ImportProcess&) = delete;
    ImportProcess& operator=(const ImportProcess&) = delete;
    ~ImportProcess();

    /// Appends what to wait for.
    void addTo(std::vector<pollfd>& waiting) const;
    /// Takes what has arrived, without waiting. Returns whether the process has nothing more to say.
    bool takeArrived();
    /// When its time is up; nothing without a limit.
    [[nodiscard]] const std::optional<Clock::time_point>& getDeadline() const { return deadline_; }
    /// Ends the import because its time is up.
    void timeOut();
    /// Waits for the process, which has nothing more to say. Called once.
    ImportEnd finish();
    /// The task's files, for whoever decides what becomes of them.
    [[nodiscard]] ImportFiles takeFiles() { return std::move(task_.files); }

private:
    /// A pipe from the import.
    struct Channel {
        Descriptor reading;
        Descriptor writing; // of the import; closed here once it runs
        Lines lines;
    };
    enum : std::size_t { result, errors, log, channelCount };

    void openChannels();
    void closeFiles();
    [[nodiscard]] ImportEnd endOfProcess(int status) const;

    ImportTask task_;
    Limits limits_;
    std::array<Channel, channelCount> channels_;
    std::string message_; // what came through the channel of the result
    pid_t process_ = -1;  // -1 once it has been waited for
    bool timedOut_ = false;
    std::optional<Clock::time_point> deadline_;
};

} // namespace petal
