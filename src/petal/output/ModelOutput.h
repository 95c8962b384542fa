#pragma once

#include "text/Output.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace petal {

/// An output of a command: a regular file, which is replaced as a whole, or an open stream. The operations throw
/// `std::system_error`.
class ModelOutput : public text::Output {
public:
    /// Completes the output. To be called once, as the last operation; without it a regular file is left as it was. If
    /// it throws, a regular file is as it was, or completely replaced if only bringing its name to the disk failed.
    virtual void commit() = 0;
    [[nodiscard]] virtual bool isTerminal() const = 0;

    /// Opens an output. No path, or "-", means standard output. A device or a pipe is written to directly. A regular
    /// file is replaced by `commit`; links are followed, and its permissions stay. If `descriptor` is not negative, a
    /// duplicate of it is used instead of the path. Throws `std::system_error`.
    [[nodiscard]] static std::unique_ptr<ModelOutput> open(const std::optional<std::string>& path, int descriptor = -1);
};

/// Whether `ModelOutput::open` would open a terminal. Opens only terminals and other devices; false if that fails.
[[nodiscard]] bool leadsToTerminal(const std::optional<std::string>& path);

/// The regular file that a path leads to through links, which may not exist yet; nothing if the path leads to a device,
/// folder or other kind of file. Throws `std::system_error` when the file exists and may not be written to.
[[nodiscard]] std::optional<std::filesystem::path> fileToReplace(const std::string& path);

} // namespace petal
