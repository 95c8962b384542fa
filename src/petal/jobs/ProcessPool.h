#pragma once

#include "petal/jobs/ImportProcess.h"
#include "petal/jobs/StopSignals.h"

#include <memory>
#include <vector>

namespace petal {

/// An import that has ended, by the number it was started with.
struct EndedImport {
    std::size_t number;
    ImportEnd end;
    ImportFiles files; // the task's
};

/// The imports under way. Those that have not ended by then end with the pool.
class ProcessPool {
public:
    /// `signals` must outlive the pool.
    ProcessPool(const Limits& limits, const StopSignals& signals) : limits_(limits), signals_(signals) {}

    [[nodiscard]] std::size_t getCount() const { return processes_.size(); }
    /// Throws `std::system_error` when no process can be made.
    void start(std::size_t number, ImportTask task);
    /// Waits until an import has something to say or time is up, but not longer than `atMost`, and passes on what the
    /// imports say. Returns those that have ended meanwhile. Throws `Stopped`.
    [[nodiscard]] std::vector<EndedImport> wait(std::chrono::milliseconds atMost);
    /// Ends the imports with a higher number, which are not heard of again.
    void dropAfter(std::size_t number);

private:
    [[nodiscard]] int waitingTime(std::chrono::milliseconds atMost) const;

    Limits limits_;
    const StopSignals& signals_;
    std::vector<std::unique_ptr<ImportProcess>> processes_;
    std::vector<std::size_t> numbers_; // of the process at the same index
};

} // namespace petal
