#include "petal/jobs/runChild.h"

#include "petal/jobs/ImportEnd.h"
#include "petal/jobs/ImportProcess.h"
#include "petal/jobs/StopSignals.h"
#include "petal/output/Descriptor.h"
#include "petal/output/TemporaryFile.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <clocale>
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
    explicit MemoryLimit(const std::optional<std::uint64_t>& most) : isSet_(most.has_value()) {
        if (most) {
            rlimit limit{};
            ::getrlimit(RLIMIT_DATA, &limit);
            limit.rlim_cur = std::min<rlim_t>(*most, limit.rlim_max);
            ::setrlimit(RLIMIT_DATA, &limit);
        }
    }
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;
    ~MemoryLimit() {
        if (isSet_) {
            lift();
        }
    }

    static void lift() {
        rlimit limit{};
        ::getrlimit(RLIMIT_DATA, &limit);
        limit.rlim_cur = limit.rlim_max;
        ::setrlimit(RLIMIT_DATA, &limit);
    }

private:
    bool isSet_;
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

ImportResult runWithin(const Limits& limits, const ImportTask& task, bool isLast) {
    const MemoryLimit limit(limits.memory);
    errno = 0;
    const auto tellLosses = [&](const units::UnitTree& tree) {
        writeFully(resultDescriptor, encoded(units::lossesOf(tree, task.locator->getSymbols())));
    };
    const auto tellOmissions = [](std::string_view format, const exporter::Omissions& omissions) {
        writeFully(resultDescriptor, encoded(format, omissions));
    };
    return task.run(task.request, {.uses = *task.uses,
                                   .locator = *task.locator,
                                   .takeTree = tellLosses,
                                   .takeOmissions = tellOmissions,
                                   .isLast = isLast});
}

ImportEnd run(const ImportTask& task, const Limits& limits, bool isLast) {
    try {
        return endWith(runWithin(limits, task, isLast));
    } catch (...) {
        const bool isLastError = errno == ENOMEM; // of a library without exceptions
        ImportEnd end = endWith(std::current_exception());
        const bool isShortage = memoryRanOut || (isLastError && end.outcome == Outcome::importFailed);
        return isShortage ? endWith(std::make_exception_ptr(std::bad_alloc())) : end;
    }
}

/// Makes the import write to the files and channels of the task.
void redirect(ImportTask& task, const ChildSide& side) {
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
}

/// Writes the marker to a channel, if there is one.
void mark(int channel, const std::string& marker) {
    if (channel >= 0 && !marker.empty()) {
        writeFully(channel, marker);
    }
}

/// The locale, which an import of a file whose name is in another encoding changes.
std::string locale() {
    return std::setlocale(LC_CTYPE, nullptr);
}

} // namespace

void runChild(const ChildSide& side, std::vector<ImportTask> tasks, const Limits& limits) noexcept {
    followParent(side.parent);
    resultDescriptor = side.result;
    if (side.errors >= 0) {
        ::dup2(side.errors, STDOUT_FILENO);
        ::dup2(side.errors, STDERR_FILENO);
    }
    std::set_new_handler(noteNoMemory);
    std::atexit(tellOfShortageAtExit);
    const std::string firstLocale = locale();
    for (ImportTask& task : tasks) {
        redirect(task, side);
        ImportEnd end = run(task, limits, &task == &tasks.back());
        end.listed = task.locator->takeListed();
        std::fflush(nullptr);
        mark(side.errors, side.marker);
        mark(side.log, side.marker);
        tell(end);
        if (!end.isDone() || locale() != firstLocale) {
            break;
        }
    }
    ::_exit(0);
}

} // namespace petal
