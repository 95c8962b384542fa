#pragma once

#include "petal/ImportResult.h"

#include <exception>
#include <optional>
#include <string>

namespace petal {

/// How an import ended.
struct ImportEnd {
    Outcome outcome = Outcome::success; // or `checkTripped`, when the model was written
    ImportResult result;                // nothing but zeros when it was not
    std::string text;                   // what went wrong, as in a `Failure`
    std::string advice;
    int exitStatus = 0; // unless 0, the status with which something ended the process of the import
    int signal = 0;     // unless 0, the signal that ended it

    [[nodiscard]] bool isDone() const { return outcome == Outcome::success || outcome == Outcome::checkTripped; }
};

[[nodiscard]] ImportEnd endWith(const ImportResult& result);
/// What stands for the exception that an import ended with.
[[nodiscard]] ImportEnd endWith(const std::exception_ptr& failure);

/// The bytes in which an end goes to another process of the same program, and back. The bytes may have been cut:
/// then there is none.
[[nodiscard]] std::string encoded(const ImportEnd& end);
[[nodiscard]] std::optional<ImportEnd> decoded(std::string_view bytes);

} // namespace petal
