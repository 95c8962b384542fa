// Reads the notation of a file to its end and prints how many events and damages there are.

#include "notation/ByteSource.h"
#include "notation/Reader.h"

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <unistd.h>

namespace {

void read(int file) {
    notation::DescriptorSource source(file);
    notation::Reader reader(source);
    unsigned long events = 0;
    unsigned long damages = 0;
    while (reader.next()) {
        ++events;
        damages += reader.event().kind == notation::EventKind::damage ? 1 : 0;
    }
    std::printf("%lu %lu\n", events, damages);
}

} // namespace

int main(int argc, char** argv) {
    const int file = argc == 2 ? ::open(argv[1], O_RDONLY | O_CLOEXEC) : -1;
    if (file < 0) {
        std::fputs("usage: read-notation FILE, which must be readable\n", stderr);
        return 1;
    }
    try {
        read(file);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "read-notation: %s\n", error.what());
        return 1;
    }
    return 0;
}
