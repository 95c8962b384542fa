#pragma once

#include "text/Output.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace petal {

/// Where a model is written.
class ModelOutput : public text::Output {
public:
    /// Makes what was written final. Called once, as the last operation. Throws `std::system_error`: a regular file is
    /// then as it was, or, where only bringing its name to the disk failed, what was written, whole. When this is not
    /// called, an output to a regular file has left no trace.
    virtual void commit() = 0;
    [[nodiscard]] virtual bool isTerminal() const = 0;

    /// Opens an output. No path, or "-", stands for standard output. What exists and is not a regular file, such as
    /// a device or a pipe, is written to. A regular file is only replaced by `commit`, as a whole; links are
    /// followed and its permissions stay. Throws `std::system_error`.
    /// A `descriptor` that is not negative takes the path's place; a duplicate of it is written to.
    [[nodiscard]] static std::unique_ptr<ModelOutput> open(const std::optional<std::string>& path, int descriptor = -1);
};

/// Whether `ModelOutput::open` would open a terminal. Opens nothing but terminals and other devices; false for what
/// cannot be opened.
[[nodiscard]] bool leadsToTerminal(const std::optional<std::string>& path);

/// The regular file that a path leads to, links followed, which may not exist yet; nothing when what exists there is
/// of another kind. Throws `std::system_error` when the file exists and may not be written to.
[[nodiscard]] std::optional<std::filesystem::path> fileToReplace(const std::string& path);

} // namespace petal
