#include "support/reading/FaultyFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <sys/types.h>

extern "C" {
std::FILE* __real_fopen(const char* path, const char* mode);
std::FILE* __wrap_fopen(const char* path, const char* mode);
}

namespace {

ReadFaults present;
bool areFaulty = false;
int made = 0;

/// The file proper is behind `cookie`, and unbuffered, so that one read of it is one here.
ssize_t faultyRead(void* cookie, char* buffer, std::size_t size) {
    if (made == present.failingRead && present.timesFailing > 0) {
        --present.timesFailing;
        errno = present.error;
        return -1;
    }
    ++made;
    auto* file = static_cast<std::FILE*>(cookie);
    return static_cast<ssize_t>(std::fread(buffer, 1, std::min(size, present.bytesPerRead), file));
}

int closeFile(void* cookie) {
    return std::fclose(static_cast<std::FILE*>(cookie));
}

} // namespace

std::FILE* __wrap_fopen(const char* path, const char* mode) {
    std::FILE* file = __real_fopen(path, mode);
    if (file == nullptr || !areFaulty) {
        return file;
    }
    return fopencookie(file, mode, {faultyRead, nullptr, nullptr, closeFile});
}

FaultyFile::FaultyFile(const ReadFaults& faults) {
    present = faults;
    areFaulty = true;
    made = 0;
}

FaultyFile::~FaultyFile() {
    areFaulty = false;
}

int FaultyFile::readsMade() {
    return made;
}
