#pragma once

#include "petal/Failure.h"
#include "petal/jobs/ImportProcess.h"
#include "petal/jobs/StopSignals.h"

#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace petal {

/// The failure of an import for which no process can be started.
[[nodiscard]] inline Failure noProcess(const std::system_error& error) {
    return {Outcome::unexpected, std::string("cannot start a process: ") + error.what(), ""};
}

/// The processes that run at a time. The destructor ends them. Used by one thread.
class ProcessPool {
public:
    /// `signals` must outlive the pool.
    ProcessPool(const Limits& limits, const StopSignals& signals) : limits_(limits), signals_(signals) {}

    [[nodiscard]] std::size_t getCount() const { return processes_.size(); }
    /// Starts a process for one import. Throws `std::system_error` when no process can be started.
    void start(std::size_t number, ImportTask task);
    /// Starts a process for some imports, in the order of their numbers. Another process replaces it when an import
    /// fails. `tasks` have the same callbacks or none. Throws the same.
    void start(std::vector<NumberedTask> tasks);
    /// Waits until an import sends something or reaches its time limit, for at most `atMost`, and passes on the lines
    /// of the imports. Returns the imports that have ended. Throws `Stopped`.
    [[nodiscard]] std::vector<EndedImport> wait(std::chrono::milliseconds atMost);
    /// Ends the imports with a higher number, without a result.
    void dropAfter(std::size_t number);

private:
    void restart(std::vector<NumberedTask> tasks, std::vector<EndedImport>& ended);
    [[nodiscard]] int waitingTime(std::chrono::milliseconds atMost) const;

    Limits limits_;
    const StopSignals& signals_;
    std::vector<std::unique_ptr<ImportProcess>> processes_;
};

} // namespace petal
