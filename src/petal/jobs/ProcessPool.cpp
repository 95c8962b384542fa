#include "petal/jobs/ProcessPool.h"

#include "petal/Failure.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <system_error>

namespace petal {

using std::chrono::milliseconds;

void ProcessPool::start(std::size_t number, ImportTask task) {
    std::vector<NumberedTask> tasks;
    tasks.push_back({number, std::move(task)});
    start(std::move(tasks));
}

void ProcessPool::start(std::vector<NumberedTask> tasks) {
    processes_.push_back(std::make_unique<ImportProcess>(std::move(tasks), limits_, processes_));
}

/// Starts a process in place of one that has ended, if it left imports.
void ProcessPool::restart(std::vector<NumberedTask> tasks, std::vector<EndedImport>& ended) {
    if (tasks.empty()) {
        return;
    }
    std::vector<std::size_t> numbers;
    std::ranges::transform(tasks, std::back_inserter(numbers), &NumberedTask::number);
    try {
        start(std::move(tasks));
    } catch (const std::system_error& error) {
        for (const std::size_t number : numbers) {
            ended.push_back({number, endWith(std::make_exception_ptr(noProcess(error))), {}});
        }
    }
}

int ProcessPool::waitingTime(milliseconds atMost) const {
    const auto now = ImportProcess::Clock::now();
    for (const auto& process : processes_) {
        if (const auto& deadline = process->getDeadline()) {
            atMost = std::min(atMost, std::chrono::ceil<milliseconds>(*deadline - now));
        }
    }
    return static_cast<int>(std::max(atMost, milliseconds(0)).count());
}

std::vector<EndedImport> ProcessPool::wait(milliseconds atMost) {
    std::vector<pollfd> waiting{{.fd = signals_.getDescriptor(), .events = POLLIN, .revents = 0}};
    std::vector<std::size_t> ends; // of what each process waits for
    for (const auto& process : processes_) {
        process->addTo(waiting);
        ends.push_back(waiting.size());
    }
    ::poll(waiting.data(), waiting.size(), waitingTime(atMost));
    signals_.check();
    std::vector<EndedImport> ended;
    std::size_t begin = 1;
    std::size_t index = 0;
    for (const std::size_t end : ends) { // processes that are started meanwhile come behind these
        ImportProcess& process = *processes_[index];
        const auto waited = std::span<const pollfd>(waiting).subspan(begin, end - begin);
        begin = end;
        if (process.takeArrived(waited, ended)) {
            std::vector<NumberedTask> others = process.finish(ended);
            processes_.erase(processes_.begin() + static_cast<std::ptrdiff_t>(index));
            restart(std::move(others), ended);
            continue;
        }
        if (process.getDeadline() && *process.getDeadline() <= ImportProcess::Clock::now()) {
            process.timeOut();
        }
        ++index;
    }
    return ended;
}

void ProcessPool::dropAfter(std::size_t number) {
    std::erase_if(processes_, [&](const auto& process) { return !process->dropAfter(number); });
}

} // namespace petal
