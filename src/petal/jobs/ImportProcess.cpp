#include "petal/jobs/ImportProcess.h"

#include "petal/jobs/runChild.h"
#include "petal/output/Descriptor.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/random.h>
#include <sys/wait.h>
#include <unistd.h>

namespace petal {

namespace {

constexpr std::size_t longestLine = std::size_t{1} << 20;
constexpr std::size_t mostHeld = std::size_t{1} << 20; // bytes of lines

} // namespace

void Lines::add(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        begun_ += bytes.substr(0, end);
        if (end == std::string_view::npos && begun_.size() < longestLine) {
            return;
        }
        begun_ += '\n';
        take(begun_);
        begun_.clear();
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    }
}

void Lines::end() {
    if (!begun_.empty()) {
        add("\n");
    }
}

void Lines::take(std::string_view line) {
    last_ = line.substr(0, line.size() - 1);
    taker_(line);
}

namespace {

constexpr std::size_t pieceLength = std::size_t{64} * 1024;

int waitFor(pid_t process) {
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

/// Returns whether the other end is closed. Reads at most one piece, so that no child delays the others.
bool takePiece(int descriptor, const Lines::Taker& taker) {
    static std::array<char, pieceLength> piece;
    const ssize_t count = ::read(descriptor, piece.data(), piece.size());
    if (count > 0) {
        taker({piece.data(), static_cast<std::size_t>(count)});
    }
    return count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR);
}

/// A line that no import writes, since it cannot know it.
std::string randomLine() {
    std::array<unsigned char, 16> bytes{};
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        throwErrno();
    }
    std::string line;
    for (const unsigned char byte : bytes) {
        constexpr std::string_view digits = "0123456789abcdef";
        line.append({digits[byte >> 4U], digits[byte & 15U]});
    }
    return line + "\n";
}

} // namespace

ImportProcess::ImportProcess(std::vector<NumberedTask> tasks, const Limits& limits,
                             std::span<const std::unique_ptr<ImportProcess>> siblings)
    : limits_(limits) {
    for (NumberedTask& task : tasks) {
        imports_.push_back({std::move(task), {}, {}});
    }
    if (imports_.size() > 1) {
        marker_ = randomLine();
    }
    openChannels();
    std::fflush(nullptr); // otherwise both processes would write buffered output
    const pid_t parent = ::getpid();
    process_ = ::fork();
    if (process_ < 0) {
        throwErrno();
    }
    if (process_ == 0) {
        for (const auto& sibling : siblings) {
            sibling->closeFiles();
        }
        beChild(parent);
    }
    for (Channel& channel : channels_) {
        channel.writing.close();
    }
    startClock();
}

ImportProcess::~ImportProcess() {
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
        waitFor(process_);
    }
}

void ImportProcess::beChild(pid_t parent) {
    std::vector<ImportTask> tasks;
    for (Import& import : imports_) {
        tasks.push_back(std::move(import.given.task));
    }
    runChild({parent, channels_[result].writing.get(), channels_[errors].writing.get(), channels_[log].writing.get(),
              marker_},
             std::move(tasks), limits_);
}

const Lines::Taker& ImportProcess::takerOf(const ImportTask& task, std::size_t channel) {
    return channel == errors ? task.errors : task.log;
}

void ImportProcess::openChannels() {
    for (std::size_t number = 0; number < channelCount; ++number) {
        if (number != result && !takerOf(imports_.front().given.task, number)) {
            continue;
        }
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
            throwErrno();
        }
        channels_[number].reading = Descriptor(ends[0]);
        channels_[number].writing = Descriptor(ends[1]);
        channels_[number].lines = Lines([this, number](std::string_view line) { takeLine(number, line); });
        ::fcntl(ends[0], F_SETFL, O_NONBLOCK);
    }
}

void ImportProcess::closeFiles() {
    for (Channel& channel : channels_) {
        channel.reading.close();
    }
    for (std::size_t import = current_; import < imports_.size(); ++import) {
        for (const TemporaryFile* file : imports_[import].given.task.files.inOrder()) {
            ::close(file->getDescriptor());
        }
    }
}

void ImportProcess::startClock() {
    if (limits_.time) {
        deadline_ = Clock::now() + *limits_.time;
    }
}

void ImportProcess::addTo(std::vector<pollfd>& waiting) const {
    for (const Channel& channel : channels_) {
        if (channel.reading.isOpen()) {
            waiting.push_back({.fd = channel.reading.get(), .events = POLLIN, .revents = 0});
        }
    }
}

bool ImportProcess::takeArrived(std::span<const pollfd> waited, std::vector<EndedImport>& ended) {
    const auto hasArrived = [&](const Channel& channel) {
        const auto found = std::ranges::find(waited, channel.reading.get(), &pollfd::fd);
        return found != waited.end() && found->revents != 0;
    };
    bool isSilent = true;
    for (std::size_t number = 0; number < channelCount; ++number) {
        Channel& channel = channels_[number];
        const auto take = [&](std::string_view bytes) {
            if (number == result) {
                takeResult(bytes);
            } else {
                channel.lines.add(bytes);
            }
        };
        if (channel.reading.isOpen() && hasArrived(channel) && takePiece(channel.reading.get(), take)) {
            channel.reading.close();
        }
        isSilent = isSilent && !channel.reading.isOpen();
    }
    settle(ended);
    return isSilent || (isCut_ && current_ == imports_.size());
}

void ImportProcess::takeResult(std::string_view bytes) {
    message_ += bytes;
    std::string_view rest = message_;
    std::size_t& import = channels_[result].import;
    while (import < imports_.size() && takePart(rest, imports_[import].message)) {
        import += imports_[import].message.end ? 1 : 0;
    }
    message_.erase(0, message_.size() - rest.size());
}

void ImportProcess::takeLine(std::size_t channel, std::string_view line) {
    if (marker_.empty() || !line.ends_with(marker_)) {
        passOn(channel, line);
        return;
    }
    line.remove_suffix(marker_.size());
    if (!line.empty()) { // the import did not end its last line
        passOn(channel, std::string(line) + "\n");
    }
    ++channels_[channel].import;
}

void ImportProcess::passOn(std::size_t channel, std::string_view line) {
    const std::size_t import = channels_[channel].import;
    if (import == 0) {
        takerOf(imports_.front().given.task, channel)(line);
    } else if (import < imports_.size()) {
        imports_[import].held.push_back({channel, std::string(line)});
        heldBytes_ += line.size();
        if (heldBytes_ > mostHeld) {
            ::kill(process_, SIGKILL); // as the first of another process it needs no memory here
        }
    }
}

/// Whether everything from the import has arrived.
bool ImportProcess::hasEnded(std::size_t import) const {
    return imports_[import].message.end && !timedOut_ && std::ranges::all_of(channels_, [&](const Channel& channel) {
               return !channel.reading.isOpen() || channel.import > import;
           });
}

void ImportProcess::settle(std::vector<EndedImport>& ended) {
    while (current_ < imports_.size() && hasEnded(current_)) {
        Import& import = imports_[current_];
        ImportEnd& end = *import.message.end;
        if (current_ > 0 && !end.isDone()) {
            return; // to be run again
        }
        for (const HeldLine& held : import.held) {
            takerOf(import.given.task, held.channel)(held.line);
            heldBytes_ -= held.line.size();
        }
        append(std::move(end), ended);
    }
}

void ImportProcess::append(ImportEnd end, std::vector<EndedImport>& ended) {
    Import& import = imports_[current_++];
    end.losses = std::move(import.message.losses);
    end.omissions = std::move(import.message.omissions);
    import.given.task.locator->list(end.listed);
    ended.push_back({import.given.number, std::move(end), std::move(import.given.task.files)});
    startClock();
}

void ImportProcess::timeOut() {
    timedOut_ = true;
    deadline_.reset();
    ::kill(process_, SIGKILL);
}

std::vector<NumberedTask> ImportProcess::finish(std::vector<EndedImport>& ended) {
    if (current_ == imports_.size()) {
        ::kill(process_, SIGKILL); // it may be at imports that were dropped
    }
    const int status = waitFor(std::exchange(process_, -1));
    channels_[errors].lines.end();
    channels_[log].lines.end();
    settle(ended);
    if (current_ == 0) {
        append(endOfProcess(status), ended);
    }
    std::vector<NumberedTask> others;
    for (; current_ < imports_.size(); ++current_) {
        others.push_back(std::move(imports_[current_].given));
        std::ranges::for_each(others.back().task.files.inOrder(), &TemporaryFile::empty);
    }
    return others;
}

bool ImportProcess::dropAfter(std::size_t number) {
    const auto first = std::ranges::find_if(imports_.begin() + static_cast<std::ptrdiff_t>(current_), imports_.end(),
                                            [&](const Import& import) { return import.given.number > number; });
    isCut_ = isCut_ || first != imports_.end();
    imports_.erase(first, imports_.end());
    return current_ < imports_.size();
}

ImportEnd ImportProcess::endOfProcess(int status) const {
    ImportEnd end;
    if (timedOut_) {
        const auto seconds = std::chrono::duration<double>(*limits_.time).count();
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), "not done within %g seconds", seconds);
        end.outcome = Outcome::timedOut;
        end.text = text.data();
    } else if (WIFSIGNALED(status)) {
        end.outcome = Outcome::crashed;
        end.signal = WTERMSIG(status);
        end.text = "ended by signal " + std::to_string(end.signal) + " (" + ::strsignal(end.signal) + ")";
    } else {
        end.outcome = Outcome::bridgeEnded;
        end.exitStatus = WEXITSTATUS(status);
        end.text = "the bridge ended the process with status " + std::to_string(end.exitStatus);
        if (const std::string& last = channels_[errors].lines.getLast(); !last.empty()) {
            end.text += ": " + last;
        }
    }
    return end;
}

} // namespace petal
