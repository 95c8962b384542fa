// How fast the notation is read: notation_bench FILE [SECONDS]. The file is put into memory first, several times over
// up to 64 MiB, and read to its end again and again. Prints the best and the median pass.

#include "notation/Reader.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr std::size_t enough = std::size_t{64} * 1024 * 1024;

struct Pass {
    double seconds = 0;
    std::size_t events = 0;
    std::size_t damages = 0;
};

Pass readOnce(const std::string& bytes) {
    const auto start = std::chrono::steady_clock::now();
    notation::MemorySource source(bytes);
    notation::Reader reader(source);
    Pass pass;
    while (reader.next()) {
        ++pass.events;
        pass.damages += reader.event().kind == notation::EventKind::damage ? 1 : 0;
    }
    pass.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return pass;
}

} // namespace

int main(int argc, char** argv) {
    std::ostringstream contents;
    if (argc < 2 || !(contents << std::ifstream(argv[1], std::ios::binary).rdbuf())) {
        std::fputs("usage: notation_bench FILE [SECONDS]\n", stderr);
        return EXIT_FAILURE;
    }
    const std::string file = contents.str();
    std::string bytes = file;
    while (bytes.size() < enough) {
        bytes += file;
    }
    std::vector<double> rates;
    Pass last;
    double total = 0;
    for (const double most = argc > 2 ? std::atof(argv[2]) : 3; total < most || rates.empty();) {
        last = readOnce(bytes);
        total += last.seconds;
        rates.push_back(static_cast<double>(bytes.size()) / 1e6 / last.seconds);
    }
    std::ranges::sort(rates);
    std::printf("%zu bytes, %zu events, %zu damages, %zu passes: best %.0f MB/s, median %.0f MB/s, %.1f ns an event\n",
                bytes.size(), last.events, last.damages, rates.size(), rates.back(), rates[rates.size() / 2],
                static_cast<double>(bytes.size()) / rates.back() * 1e3 / static_cast<double>(last.events));
    return EXIT_SUCCESS;
}
