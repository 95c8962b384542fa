#include "petal/jobs/runChild.h"

#include "petal/jobs/ImportEnd.h"
#include "petal/jobs/ImportProcess.h"
#include "petal/jobs/StopSignals.h"
#include "petal/output/Descriptor.h"
#include "petal/output/TemporaryFile.h"
#include "petal/output/fileFailure.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace petal {

namespace {

/// Leaves signals to the parent, and ends this process with it.
void followParent(pid_t parent) {
    RemovedOnSignal::forgetAll();
    for (const int signal : {SIGINT, SIGQUIT, SIGHUP}) {
        std::signal(signal, SIG_IGN); // a terminal sends them to every process
    }
    StopSignals::unblock();
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) {
        ::_exit(1);
    }
}

/// Limits the memory of the import. The limit ends before the result is sent, which needs memory.
class MemoryLimit {
public:
    explicit MemoryLimit(const std::optional<std::uint64_t>& most) {
        if (most) {
            rlimit limit{};
            ::getrlimit(RLIMIT_DATA, &limit);
            limit.rlim_cur = std::min<rlim_t>(*most, limit.rlim_max);
            ::setrlimit(RLIMIT_DATA, &limit);
        }
    }
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;
    ~MemoryLimit() { lift(); }

    static void lift() {
        rlimit limit{};
        ::getrlimit(RLIMIT_DATA, &limit);
        limit.rlim_cur = limit.rlim_max;
        ::setrlimit(RLIMIT_DATA, &limit);
    }
};

std::atomic<bool> memoryRanOut{false};

/// Records the lack of memory: the bridge may turn the exception into an unexpected error.
void noteNoMemory() {
    memoryRanOut = true;
    throw std::bad_alloc();
}

int resultDescriptor = -1; // of this process, for the encoded `ImportEnd`

void tell(const ImportEnd& end) {
    try {
        writeFully(resultDescriptor, encoded(end));
    } catch (const std::system_error&) {
        ::_exit(1); // the parent is gone
    }
}

/// Reports a lack of memory when the bridge ends the process, as it does when its input buffer cannot grow. `errno` has
/// the reason then.
void tellOfShortageAtExit() {
    if (errno == ENOMEM) {
        MemoryLimit::lift();
        tell(endWith(std::make_exception_ptr(std::bad_alloc())));
    }
}

void bringToDisk(const TemporaryFile& file) {
    try {
        file.sync();
    } catch (const std::system_error& error) {
        throw outputFailure(outputName(file.getTarget()), error);
    }
}

ImportResult runWithin(const Limits& limits, const ImportTask& task) {
    const MemoryLimit limit(limits.memory);
    std::set_new_handler(noteNoMemory);
    std::atexit(tellOfShortageAtExit);
    errno = 0;
    const auto tellLosses = [&](const units::UnitTree& tree) {
        writeFully(resultDescriptor, encoded(units::lossesOf(tree, task.locator->getSymbols())));
    };
    const auto tellOmissions = [](std::string_view format, const exporter::Omissions& omissions) {
        writeFully(resultDescriptor, encoded(format, omissions));
    };
    const ImportResult result = task.run(task.request, {*task.uses, *task.locator, tellLosses, tellOmissions});
    for (const TemporaryFile* file : task.files.inOrder()) {
        bringToDisk(*file);
    }
    return result;
}

ImportEnd run(const ImportTask& task, const Limits& limits) {
    try {
        return endWith(runWithin(limits, task));
    } catch (...) {
        const bool isLastError = errno == ENOMEM; // of a library without exceptions
        ImportEnd end = endWith(std::current_exception());
        const bool isShortage = memoryRanOut || (isLastError && end.outcome == Outcome::importFailed);
        return isShortage ? endWith(std::make_exception_ptr(std::bad_alloc())) : end;
    }
}

} // namespace

void runChild(const ChildSide& side, ImportTask task, const Limits& limits) noexcept {
    followParent(side.parent);
    resultDescriptor = side.result;
    if (side.errors >= 0) {
        ::dup2(side.errors, STDOUT_FILENO);
        ::dup2(side.errors, STDERR_FILENO);
    }
    if (side.log >= 0) {
        task.request.log = "/dev/fd/" + std::to_string(side.log);
    }
    std::size_t index = 0;
    const auto nextDescriptor = [&] {
        const bool isThere = index < task.files.models.size() && task.files.models[index] != nullptr;
        return isThere ? task.files.models[index++]->getDescriptor() : (++index, -1);
    };
    for (Destination& destination : task.request.destinations) {
        destination.descriptor = nextDescriptor();
    }
    for (Destination& destination : task.request.destinations) {
        destination.besideDescriptor = destination.beside ? nextDescriptor() : -1;
    }
    if (task.files.ledger != nullptr) {
        task.request.ledgerDescriptor = task.files.ledger->getDescriptor();
    }
    ImportEnd end = run(task, limits);
    end.listed = task.locator->takeListed();
    std::fflush(nullptr);
    tell(end);
    ::_exit(0);
}

} // namespace petal
