#pragma once

#include "petal/output/Descriptor.h"

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <limits>
#include <string>
#include <string_view>

namespace petal {

/// Removes a file when a signal asks the program to end (interrupt, quit, hang-up, termination) and before it ends.
///
/// Handles any number of files, each in constant time and without allocation. One thread: the handler may only
/// interrupt the thread that remembers and forgets.
class RemovedOnSignal {
public:
    RemovedOnSignal() = default;
    RemovedOnSignal(const RemovedOnSignal&) = delete;
    RemovedOnSignal& operator=(const RemovedOnSignal&) = delete;
    ~RemovedOnSignal() { forget(); }

    /// `path` must live until the file is forgotten. To be called once.
    void remember(const char* path);
    void forget() noexcept;
    /// Forgets all files. For a forked process, which does not own them.
    static void forgetAll() noexcept;

private:
    static void removeAndEnd(int signal);
    static void handleEndingSignals();

    const char* path_ = nullptr;
    /// Links of the list of remembered files. The handler follows only `next_`, so each change of the list is one
    /// store.
    std::atomic<RemovedOnSignal*> next_ = nullptr;
    std::atomic<RemovedOnSignal*>* link_ = nullptr; // what points to this one; null: not in the list
};

/// A file that replaces another one once it is complete.
///
/// It is in the same folder under a temporary name. The destructor removes it unless `takePlace` has succeeded. A
/// process that is killed leaves its files; `removeAbandoned` removes them later.
class TemporaryFile {
public:
    /// The effect of the signals that ask a program to end: see `RemovedOnSignal`. With `leaves` the caller handles
    /// them.
    enum class Signal { removes, leaves };
    /// Whether there may be a target already. There is none in a folder that the caller has made.
    enum class Target { mayExist, isNew };

    /// Creates an empty file that may become `target`. Throws `std::system_error`.
    explicit TemporaryFile(std::string target, Signal signal = Signal::removes, Target kind = Target::mayExist);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    /// For writing, also by a forked process. Owned by this object, which closes it in its destructor.
    [[nodiscard]] int getDescriptor() const { return descriptor_.get(); }
    [[nodiscard]] const std::string& getTarget() const { return target_; }
    /// The folder of both; empty for the current one.
    [[nodiscard]] const std::string& getFolder() const { return folder_; }
    [[nodiscard]] bool isTargetNew() const { return kind_ == Target::isNew; }

    /// Throws `std::system_error`.
    void write(std::string_view bytes);
    /// Ends writing, and closes the descriptor, of which a process may have few. PRECONDITION: the target is new, so
    /// no permissions are taken later.
    void close() { descriptor_.close(); }
    /// Removes the contents, so that writing begins again. Throws `std::system_error`.
    void empty();
    /// Gives the file the target's permissions if there is a target. Throws `std::system_error`.
    void takePermissions() const;
    /// The same, and brings the contents to the disk. Throws `std::system_error`.
    void sync() const;
    /// Renames the file to the target, after `sync` or `FileSystems::sync`. Throws `std::system_error`; the target is
    /// then as it was. The new name is on the disk after `syncFolder` of its folder.
    void takePlace();

private:
    void forget();

    std::string target_; // texts: paths are taken apart each time that they are made
    std::string folder_;
    std::string path_; // empty once there is nothing to remove
    Descriptor descriptor_;
    Target kind_;
    RemovedOnSignal removal_;
};

/// A new name for a temporary file in a folder. A file that an earlier process left may already have it.
[[nodiscard]] std::string temporaryNameIn(const std::string& folder);

/// The folder of a file: its path up to the last slash; empty without one, which stands for the current folder.
[[nodiscard]] std::string_view folderOf(std::string_view path);
/// The reverse.
[[nodiscard]] std::string fileIn(std::string_view folder, std::string_view name);

/// Removes the temporary files in a folder whose processes have ended without removing them, as far as that is
/// possible. An empty path is the current folder.
///
/// The name of a file contains its process. Only processes of the same boot and the same namespace of process ids can
/// be known to have ended, so the files of other machines, of containers and of earlier boots stay. Lists a folder once
/// per process, however often it is called; 10,000 names take about 5 ms. Stops after `mostNames` names.
void removeAbandoned(const std::filesystem::path& folder,
                     std::size_t mostNames = std::numeric_limits<std::size_t>::max());

/// For a command that writes a single file, where searching a large folder would take longer than the command.
inline constexpr std::size_t fewNames = 10'000;

/// Brings the names in a folder to the disk, if its file system can; an empty path is the current folder. Throws
/// `std::system_error`.
void syncFolder(const std::filesystem::path& folder);

} // namespace petal
