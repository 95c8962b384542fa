#include "petal/jobs/ProcessPool.h"

#include <algorithm>

namespace petal {

using std::chrono::milliseconds;

void ProcessPool::start(std::size_t number, ImportTask task) {
    processes_.push_back(std::make_unique<ImportProcess>(std::move(task), limits_, processes_));
    numbers_.push_back(number);
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
    for (const auto& process : processes_) {
        process->addTo(waiting);
    }
    ::poll(waiting.data(), waiting.size(), waitingTime(atMost));
    signals_.check();
    std::vector<EndedImport> ended;
    for (std::size_t index = 0; index < processes_.size();) {
        ImportProcess& process = *processes_[index];
        if (process.takeArrived()) {
            ImportEnd end = process.finish();
            ended.push_back({numbers_[index], std::move(end), process.takeFiles()});
            processes_.erase(processes_.begin() + static_cast<std::ptrdiff_t>(index));
            numbers_.erase(numbers_.begin() + static_cast<std::ptrdiff_t>(index));
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
    for (std::size_t index = processes_.size(); index-- > 0;) {
        if (numbers_[index] > number) {
            processes_.erase(processes_.begin() + static_cast<std::ptrdiff_t>(index));
            numbers_.erase(numbers_.begin() + static_cast<std::ptrdiff_t>(index));
        }
    }
}

} // namespace petal
