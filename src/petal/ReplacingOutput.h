#pragma once

#include "petal/ModelOutput.h"
#include "petal/TemporaryFile.h"

namespace petal {

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

} // namespace petal
