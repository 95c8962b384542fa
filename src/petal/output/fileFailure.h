#pragma once

#include "petal/Failure.h"

#include <optional>
#include <string>
#include <system_error>

namespace petal {

/// The failure to read the file at `path`, with the outcome `inputNotRead`.
[[nodiscard]] Failure inputFailure(const std::string& path, const std::system_error& error);
/// Advice for an import of `file` that failed, from the state of the file on the disk.
[[nodiscard]] std::string importAdvice(const std::string& file);

/// The failure to write `what`, which is shown as it is, such as a quoted path or "standard output", with the outcome
/// `outputFailed`.
[[nodiscard]] Failure outputFailure(const std::string& what, const std::system_error& error);
/// The name of an output in messages: the quoted path, or "standard output" for none and for "-".
[[nodiscard]] std::string outputName(const std::optional<std::string>& path);

/// Calls `read`, which reads the files of a model once more to find `what`, and returns its result. Throws a `Failure`
/// when they cannot be read.
template <class Read>
auto readAgain(const std::string& file, const char* what, Read read) {
    try {
        return read();
    } catch (const std::system_error& error) {
        throw Failure(Outcome::unexpected,
                      "'" + file + "' cannot be read again for " + what + ": " + error.code().message(), "");
    }
}

} // namespace petal
