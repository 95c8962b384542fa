#pragma once

#include "MemoryFile.h"

#include <string>

namespace fuzz {

/// Takes what goes to the standard output and error streams, and gives standard input nothing, between `start` and
/// `stop`. One at a time.
class CapturedStreams {
public:
    CapturedStreams();
    CapturedStreams(const CapturedStreams&) = delete;
    CapturedStreams& operator=(const CapturedStreams&) = delete;
    ~CapturedStreams();

    void start();
    void stop();

    /// What went there between the last `start` and `stop`.
    [[nodiscard]] std::string output() const { return output_.contents(); }
    [[nodiscard]] std::string errors() const { return errors_.contents(); }

private:
    static constexpr int count = 3;

    MemoryFile input_;
    MemoryFile output_;
    MemoryFile errors_;
    int kept_[count]; // the real streams
};

} // namespace fuzz
