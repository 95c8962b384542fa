#pragma once

#include <cstddef>
#include <string>

/// How the reads of the next file that is opened go. Belongs to programs linked with `--wrap=fopen`.
struct ReadFaults {
    std::size_t bytesPerRead = 4096; // at the most
    int failingRead = -1;            // the number of the read that fails, from 0; -1 for none
    int error = 0;                   // its error code
    int timesFailing = 1;            // how often it fails before it succeeds
};

/// While it lives, whatever file is opened for reading is read with these faults.
class FaultyFile {
public:
    explicit FaultyFile(const ReadFaults& faults);
    FaultyFile(const FaultyFile&) = delete;
    FaultyFile& operator=(const FaultyFile&) = delete;
    ~FaultyFile();

    /// How many reads have succeeded, the one at the end of the file included.
    [[nodiscard]] static int readsMade();
};
