#include "petal/jobs/ImportProcess.h"

#include "petal/jobs/runChild.h"
#include "petal/output/Descriptor.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>

namespace petal {

namespace {

constexpr std::size_t longestLine = std::size_t{1} << 20;

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

} // namespace

ImportProcess::ImportProcess(ImportTask task, const Limits& limits,
                             std::span<const std::unique_ptr<ImportProcess>> siblings)
    : task_(std::move(task)), limits_(limits) {
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
        runChild(
            {parent, channels_[result].writing.get(), channels_[errors].writing.get(), channels_[log].writing.get()},
            std::move(task_), limits_);
    }
    for (Channel& channel : channels_) {
        channel.writing.close();
    }
    if (limits_.time) {
        deadline_ = Clock::now() + *limits_.time;
    }
}

ImportProcess::~ImportProcess() {
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
        waitFor(process_);
    }
}

void ImportProcess::openChannels() {
    channels_[errors].lines = Lines(task_.errors);
    channels_[log].lines = Lines(task_.log);
    for (std::size_t number = 0; number < channelCount; ++number) {
        if (number != result && !channels_[number].lines.isTaken()) {
            continue;
        }
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
            throwErrno();
        }
        channels_[number].reading = Descriptor(ends[0]);
        channels_[number].writing = Descriptor(ends[1]);
        ::fcntl(ends[0], F_SETFL, O_NONBLOCK);
    }
}

void ImportProcess::closeFiles() {
    for (Channel& channel : channels_) {
        channel.reading.close();
    }
    for (const TemporaryFile* file : task_.files.inOrder()) {
        ::close(file->getDescriptor());
    }
}

void ImportProcess::addTo(std::vector<pollfd>& waiting) const {
    for (const Channel& channel : channels_) {
        if (channel.reading.isOpen()) {
            waiting.push_back({.fd = channel.reading.get(), .events = POLLIN, .revents = 0});
        }
    }
}

bool ImportProcess::takeArrived() {
    bool isSilent = true;
    for (std::size_t number = 0; number < channelCount; ++number) {
        Channel& channel = channels_[number];
        const auto take = [&](std::string_view bytes) {
            if (number == result) {
                message_ += bytes;
            } else {
                channel.lines.add(bytes);
            }
        };
        if (channel.reading.isOpen() && takePiece(channel.reading.get(), take)) {
            channel.reading.close();
        }
        isSilent = isSilent && !channel.reading.isOpen();
    }
    return isSilent;
}

void ImportProcess::timeOut() {
    timedOut_ = true;
    deadline_.reset();
    ::kill(process_, SIGKILL);
}

ImportEnd ImportProcess::finish() {
    const int status = waitFor(std::exchange(process_, -1));
    channels_[errors].lines.end();
    channels_[log].lines.end();
    ImportMessage message = decoded(message_);
    ImportEnd end = message.end && !timedOut_ ? *std::move(message.end) : endOfProcess(status);
    end.losses = std::move(message.losses);
    end.omissions = std::move(message.omissions);
    task_.locator->list(end.listed);
    return end;
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
