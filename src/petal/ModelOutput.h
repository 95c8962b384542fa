#pragma once

#include "export/Output.h"

#include <memory>
#include <optional>
#include <string>

namespace petal {

/// Where a model is written.
class ModelOutput : public exporter::Output {
public:
    /// Makes what was written final. Called once, as the last operation. Throws `std::system_error`; then, and
    /// when it is not called, an output to a regular file has left no trace.
    virtual void commit() = 0;
    [[nodiscard]] virtual bool isTerminal() const = 0;

    /// Opens an output. No path, or "-", stands for standard output. What exists and is not a regular file, such as
    /// a device or a pipe, is written to. A regular file is only replaced by `commit`, as a whole; links are
    /// followed and its permissions stay. Throws `std::system_error`.
    [[nodiscard]] static std::unique_ptr<ModelOutput> open(const std::optional<std::string>& path);
};

} // namespace petal
