#pragma once

#include "petal/exitStatus.h"

#include <stdexcept>
#include <string>

namespace petal {

/// Ends a command. The text says what went wrong; texts need not be printable.
class Failure : public std::runtime_error {
public:
    /// `advice` says what to do next, in whole sentences; it may be empty.
    Failure(Outcome outcome, const std::string& text, std::string advice)
        : std::runtime_error(text), outcome_(outcome), advice_(std::move(advice)) {}

    [[nodiscard]] Outcome getOutcome() const { return outcome_; }
    [[nodiscard]] const std::string& getAdvice() const { return advice_; }

private:
    Outcome outcome_;
    std::string advice_;
};

/// Lines that tell what went wrong, and what to do next unless `advice` is empty. The texts need not be printable.
[[nodiscard]] std::string failureLines(const std::string& text, const std::string& advice);

/// Writes them to standard error.
void printFailure(const char* text, const std::string& advice);

} // namespace petal
