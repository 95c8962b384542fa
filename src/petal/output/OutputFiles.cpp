#include "petal/output/OutputFiles.h"

#include "petal/output/Descriptor.h"

#include <cerrno>
#include <csignal>
#include <set>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace petal {

namespace {

namespace fs = std::filesystem;

/// Blocks the signals that ask a program to end, as long as it lives.
class SignalPause {
public:
    SignalPause() {
        sigset_t ending{};
        ::sigemptyset(&ending);
        for (const int signal : {SIGINT, SIGQUIT, SIGHUP, SIGTERM}) {
            ::sigaddset(&ending, signal);
        }
        ::sigprocmask(SIG_BLOCK, &ending, &before_);
    }
    SignalPause(const SignalPause&) = delete;
    SignalPause& operator=(const SignalPause&) = delete;
    ~SignalPause() { ::sigprocmask(SIG_SETMASK, &before_, nullptr); }

private:
    sigset_t before_{};
};

/// Replaces files, and can undo that until it is destroyed.
class Replacement {
public:
    Replacement() = default;
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement() {
        for (const Step& step : steps_) {
            if (!step.isNew) {
                ::unlink(step.former.c_str());
            }
        }
    }

    /// Throws `std::system_error`; the target is then as it was.
    void replace(TemporaryFile& file) {
        const fs::path& target = file.getTarget();
        Step step{.target = target, .former = temporaryNameBeside(target), .isNew = false};
        step.isNew = ::link(target.c_str(), step.former.c_str()) != 0 && errno == ENOENT;
        try {
            file.takePlace();
        } catch (...) {
            ::unlink(step.former.c_str());
            throw;
        }
        steps_.push_back(std::move(step));
    }
    void undo() noexcept {
        for (const Step& step : steps_) {
            if (step.isNew) {
                ::unlink(step.target.c_str());
            } else {
                ::rename(step.former.c_str(), step.target.c_str());
            }
        }
    }

private:
    struct Step {
        fs::path target;
        fs::path former; // a second name of the file that was replaced
        bool isNew;      // the target did not exist
    };
    std::vector<Step> steps_;
};

} // namespace

OutputFiles::OutputFiles(const std::optional<std::string>& path, int descriptor)
    : one_(ModelOutput::open(path, descriptor)) {}

text::Output& OutputFiles::open(std::string_view name) {
    if (one_ != nullptr) {
        return *one_;
    }
    const fs::path path = folder_ / name;
    fs::create_directories(path.parent_path());
    auto target = fileToReplace(path);
    if (!target) {
        throw std::system_error(std::make_error_code(std::errc::file_exists));
    }
    return add(std::move(*target));
}

text::Output& OutputFiles::add(fs::path target) {
    const fs::path folder = target.parent_path();
    removeAbandoned(folder, fewNames);
    fileSystems_.watch(folder);
    return files_.emplace_back(std::move(target));
}

void OutputFiles::addBeside(const std::string& path, int descriptor) {
    if (descriptor < 0 && path != "-" && namedDescriptor(path) < 0) {
        if (auto target = fileToReplace(path)) {
            beside_ = &add(std::move(*target));
            return;
        }
    }
    stream_ = ModelOutput::open(path, descriptor);
    beside_ = stream_.get();
}

void OutputFiles::commit() {
    if (stream_ != nullptr) {
        stream_->commit();
    }
    sync();
    replaceAll();
    std::set<fs::path> folders;
    for (const File& file : files_) {
        folders.insert(file.temporary.getTarget().parent_path());
    }
    fileSystems_.syncFolders(folders);
}

void OutputFiles::sync() {
    std::vector<const TemporaryFile*> files;
    for (const File& file : files_) {
        files.push_back(&file.temporary);
    }
    for (const std::error_code& error : fileSystems_.sync(files)) {
        if (error) {
            throw std::system_error(error);
        }
    }
}

void OutputFiles::replaceAll() {
    const SignalPause pause;
    Replacement replacement;
    try {
        for (File& file : files_) {
            replacement.replace(file.temporary);
        }
        if (one_ != nullptr) {
            one_->commit();
        }
    } catch (...) {
        replacement.undo();
        throw;
    }
}

} // namespace petal
