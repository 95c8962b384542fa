#pragma once

#include "notation/ByteSource.h"

#include <string>

namespace petal {

/// A file that is read from its beginning to its end: a regular file, a pipe, or standard input for the path "-".
class InputFile final : public notation::ByteSource {
public:
    /// Throws a `Failure` with the outcome `inputNotRead`.
    explicit InputFile(std::string path);
    ~InputFile() override;

    /// Throws a `Failure` with the outcome `inputNotRead` when the file cannot be read.
    std::size_t read(char* target, std::size_t size) override;
    /// The first bytes of what was read, as many as tell what the file is.
    [[nodiscard]] const std::string& getHead() const { return head_; }

private:
    std::string path_;
    int descriptor_;
    std::string head_;
};

} // namespace petal
