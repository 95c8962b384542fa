#include "petal/output/OutputFiles.h"

#include "petal/output/Descriptor.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <set>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace petal {

namespace {

constexpr mode_t newFolderMode = 0777; // before the user's mask

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

    /// Throws `std::system_error`; the target is then as it was. The file must live as long.
    void replace(TemporaryFile& file) {
        const std::string& target = file.getTarget();
        Step step{.target = target, .former = {}, .isNew = file.isTargetNew()};
        if (!step.isNew) {
            step.former = temporaryNameIn(file.getFolder());
            step.isNew = ::link(target.c_str(), step.former.c_str()) != 0 && errno == ENOENT;
        }
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
        const std::string& target;
        std::string former; // a second name of the file that was replaced
        bool isNew;         // the target did not exist
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
    std::string path = fileIn(folder_, name);
    if (makeFolder(folderOf(path))) {
        return add(std::move(path), TemporaryFile::Target::isNew);
    }
    auto target = fileToReplace(path);
    if (!target) {
        throw std::system_error(std::make_error_code(std::errc::file_exists));
    }
    return add(target->native(), TemporaryFile::Target::mayExist);
}

bool OutputFiles::makeFolder(std::string_view path) {
    if (const auto known = isNewFolder_.find(path); known != isNewFolder_.end()) {
        return known->second;
    }
    const std::string folder(path);
    const std::string parent(folderOf(path));
    if (folder.size() > folder_.size()) {
        makeFolder(parent);
    }
    bool isNew = ::mkdir(folder.c_str(), newFolderMode) == 0;
    if (!isNew && errno == ENOENT && !parent.empty() && parent != folder) {
        makeFolder(parent);
        isNew = ::mkdir(folder.c_str(), newFolderMode) == 0;
    }
    if (!isNew) {
        std::filesystem::create_directories(folder); // it exists, or this says why it cannot be made
    }
    fileSystems_.watch(folder, isNew ? parent : folder); // a new folder is on the file system of the one that it is in
    isNewFolder_.emplace(folder, isNew);
    return isNew;
}

text::Output& OutputFiles::add(std::string target, TemporaryFile::Target kind) {
    if (kind == TemporaryFile::Target::mayExist) {
        const std::string folder(folderOf(target));
        removeAbandoned(folder, fewNames);
        fileSystems_.watch(folder);
    }
    ++openCount_;
    return files_.emplace_back(std::move(target), kind);
}

void OutputFiles::close() {
    if (!files_.empty() && files_.back().temporary.isTargetNew()) {
        files_.back().temporary.close();
        --openCount_;
    }
}

void OutputFiles::addBeside(const std::string& path, int descriptor) {
    if (descriptor < 0 && path != "-" && namedDescriptor(path) < 0) {
        if (auto target = fileToReplace(path)) {
            beside_ = &add(target->native(), TemporaryFile::Target::mayExist);
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
    std::set<std::string> folders;
    for (const File& file : files_) {
        folders.insert(file.temporary.getFolder());
    }
    fileSystems_.syncFolders(folders);
    files_.clear();
    openCount_ = 0;
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
