#pragma once

#include "petal/ModelOutput.h"

namespace petal {

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
