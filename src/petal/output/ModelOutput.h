#pragma once

#include "petal/output/TemporaryFile.h"
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

/// Writes a regular file beside its place.
class ReplacingOutput final : public ModelOutput {
public:
    explicit ReplacingOutput(std::filesystem::path target) : file_(std::move(target)) {}

    void write(std::string_view bytes) override { file_.write(bytes); }
    void commit() override {
        file_.sync();
        file_.takePlace();
        syncFolder(file_.getTarget().parent_path());
    }
    [[nodiscard]] bool isTerminal() const override { return false; }

private:
    TemporaryFile file_;
};

/// Writes to an open file descriptor, which it owns.
class DescriptorOutput final : public ModelOutput {
public:
    explicit DescriptorOutput(int descriptor) : descriptor_(descriptor) {}
    ~DescriptorOutput() override;

    void write(std::string_view bytes) override;
    /// Closes the descriptor.
    void commit() override;
    [[nodiscard]] bool isTerminal() const override;

private:
    int descriptor_; // -1 once closed
};

} // namespace petal
