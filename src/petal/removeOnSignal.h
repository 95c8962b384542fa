#pragma once

#include <atomic>

namespace petal {

/// Removes a file when a signal asks the program to end (interrupt, quit, hang-up, termination) and before it ends.
///
/// Any number of files, each in constant time and without allocating. Used by one thread: the handler may only
/// interrupt the thread that remembers and forgets.
class RemovedOnSignal {
public:
    RemovedOnSignal() = default;
    RemovedOnSignal(const RemovedOnSignal&) = delete;
    RemovedOnSignal& operator=(const RemovedOnSignal&) = delete;
    ~RemovedOnSignal() { forget(); }

    /// `path` must live until the file is forgotten. Called once.
    void remember(const char* path);
    void forget() noexcept;
    /// Forgets all files. For a forked process, which does not own them.
    static void forgetAll() noexcept;

private:
    static void removeAndEnd(int signal);
    static void handleEndingSignals();

    const char* path_ = nullptr;
    /// The list of those remembered. The handler follows `next_` only, so each change of the list is one store.
    std::atomic<RemovedOnSignal*> next_ = nullptr;
    std::atomic<RemovedOnSignal*>* link_ = nullptr; // what points to this one; null: not in the list
};

} // namespace petal
