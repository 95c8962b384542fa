#pragma once

#include "notation/ByteSource.h"
#include "petal/output/Descriptor.h"

#include <string>

namespace petal {

/// A file that the command line names, read from its beginning to its end: a regular file, a pipe, or standard input
/// for the path "-". Its operations throw a `Failure` with the outcome `inputNotRead`.
class InputFile final : public notation::ByteSource {
public:
    static constexpr std::size_t headLength = 16;

    explicit InputFile(std::string path);

    std::size_t read(char* target, std::size_t size) override;
    /// Reads the rest of the file into memory.
    [[nodiscard]] std::string readRest();
    /// The first bytes of the file, as far as it was read, `headLength` at most.
    [[nodiscard]] const std::string& getHead() const { return head_; }

private:
    std::string path_;
    Descriptor descriptor_;
    std::string head_;
};

} // namespace petal
