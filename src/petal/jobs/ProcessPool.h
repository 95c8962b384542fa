#pragma once

#include "petal/jobs/ImportProcess.h"
#include "petal/jobs/StopSignals.h"

#include <memory>
#include <vector>

namespace petal {

/// An import that has ended, with the number that it was started with.
struct EndedImport {
    std::size_t number;
    ImportEnd end;
    ImportFiles files; // the task's
};

/// The imports that run at a time. The destructor ends them. Used by one thread.
class ProcessPool {
public:
    /// `signals` must outlive the pool.
    ProcessPool(const Limits& limits, const StopSignals& signals) : limits_(limits), signals_(signals) {}

    [[nodiscard]] std::size_t getCount() const { return processes_.size(); }
    /// Starts an import. Throws `std::system_error` when no process can be started.
    void start(std::size_t number, ImportTask task);
    /// Waits until an import sends something or reaches its time limit, for at most `atMost`, and passes on the lines
    /// of the imports. Returns the imports that have ended. Throws `Stopped`.
    [[nodiscard]] std::vector<EndedImport> wait(std::chrono::milliseconds atMost);
    /// Ends the imports with a higher number, without a result.
    void dropAfter(std::size_t number);

private:
    [[nodiscard]] int waitingTime(std::chrono::milliseconds atMost) const;

    Limits limits_;
    const StopSignals& signals_;
    std::vector<std::unique_ptr<ImportProcess>> processes_;
    std::vector<std::size_t> numbers_; // of the process at the same index
};

} // namespace petal
