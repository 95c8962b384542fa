// Scans model files with counting actions through the scanner's input layer, and with the scanner that flex makes of
// the same rule table; prints what each rule matched and how fast both went.

#include "Engines.h"
#include "Workload.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>
#include <numeric>
#include <optional>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace rose::bench;

constexpr double bytesPerMegabyte = 1e6;
constexpr double mostMegabytes = 16'384;
constexpr int mostPasses = 10'000;

/// Seconds of processor time, which other programs disturb less than they do the time on the clock.
using Seconds = std::vector<double>;

double secondsUsedBy(int who) {
    rusage usage{};
    getrusage(who, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The seconds that `run` takes of this process or (RUSAGE_CHILDREN) of those that it starts.
template <class Run>
double secondsOf(int who, Run&& run) {
    const double before = secondsUsedBy(who);
    run();
    return secondsUsedBy(who) - before;
}

/// Runs this program anew to scan `path` once by the engine of that number.
void scanInProcess(std::size_t engine, const std::string& path) {
    std::vector<std::string> words{"scan-bench", "--only", std::to_string(engine), path};
    std::vector<char*> arguments;
    std::transform(words.begin(), words.end(), std::back_inserter(arguments),
                   [](std::string& word) { return word.data(); });
    arguments.push_back(nullptr);
    pid_t child = 0;
    int status = 0;
    if (posix_spawn(&child, "/proc/self/exe", nullptr, nullptr, arguments.data(), environ) != 0 ||
        waitpid(child, &status, 0) != child || status != 0) {
        throw std::runtime_error("the scan in a process of its own failed");
    }
}

double median(Seconds values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

struct Measured {
    RuleCounts counts{};
    Seconds passes;    // in this process
    Seconds processes; // from the start to the end of one
};

/// A line of the report. The ratio is the median over the passes, which were made in turns with the rival's.
void print(const Engine& engine, const char* how, const Seconds& seconds, const Seconds& rival, double megabytes) {
    Seconds ratios(seconds.size());
    std::transform(rival.begin(), rival.end(), seconds.begin(), ratios.begin(), std::divides<>());
    std::printf("%-9s %-8s best %7.1f MB/s, median %7.1f MB/s, %6.2f times the rival\n", engine.name.c_str(), how,
                megabytes / *std::min_element(seconds.begin(), seconds.end()), megabytes / median(seconds),
                median(ratios));
}

void print(const RuleCounts& counts, std::uint64_t bytes) {
    for (std::size_t index = 0; index < counts.size(); ++index) {
        std::printf("rule %2zu %9llu\n", index + 1, static_cast<unsigned long long>(counts[index]));
    }
    const std::uint64_t matches = std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
    std::printf("%llu matches in %llu bytes\n", static_cast<unsigned long long>(matches),
                static_cast<unsigned long long>(bytes));
}

int measure(const std::vector<Engine>& engines, const Workload& workload, int passes) {
    std::vector<Measured> measured(engines.size());
    for (int pass = 0; pass < passes; ++pass) {
        for (std::size_t index = 0; index < engines.size(); ++index) {
            const File file = openFile(workload.path());
            Measured& of = measured[index];
            of.passes.push_back(secondsOf(RUSAGE_SELF, [&] { of.counts = engines[index].count(file.get()); }));
            of.processes.push_back(secondsOf(RUSAGE_CHILDREN, [&] { scanInProcess(index, workload.path()); }));
        }
    }
    const Measured& rival = measured[rivalNumber];
    print(rival.counts, workload.bytes());
    const double megabytes = static_cast<double>(workload.bytes()) / bytesPerMegabyte;
    int status = EXIT_SUCCESS;
    for (std::size_t index = 0; index < engines.size(); ++index) {
        print(engines[index], "pass", measured[index].passes, rival.passes, megabytes);
        print(engines[index], "process", measured[index].processes, rival.processes, megabytes);
        if (measured[index].counts != rival.counts) {
            std::fprintf(stderr, "%s counts otherwise than the rival\n", engines[index].name.c_str());
            status = EXIT_FAILURE;
        }
    }
    return status;
}

int run(int argc, char** argv) {
    std::vector<std::string> paths;
    int passes = 5;
    double megabytes = 0;
    std::optional<std::size_t> only;
    const std::vector<Engine> engines = allEngines();
    CLI::App app("Measures the scanner beside its rival, the one that flex makes of the same rules.");
    app.add_option("files", paths, "Scanned one after the other as one text")->required();
    app.add_option("-n,--passes", passes, "Passes of each scanner, made in turns")->check(CLI::Range(1, mostPasses));
    app.add_option("-s,--size", megabytes, "Repeat the files until there are so many megabytes")
        ->check(CLI::Range(0.0, mostMegabytes));
    app.add_option("--only", only,
                   "Scan the first file once: 0 by ours, 1 by the rival, or by another engine of the report")
        ->check(CLI::Range(std::size_t{0}, engines.size() - 1));
    app.failure_message(
        [](const CLI::App*, const CLI::Error& error) { return "scan-bench: " + std::string(error.what()) + '\n'; });
    CLI11_PARSE(app, argc, argv);
    if (only) {
        engines[*only].count(openFile(paths.front()).get());
        return EXIT_SUCCESS;
    }
    return measure(engines, Workload(paths, static_cast<std::uint64_t>(megabytes * bytesPerMegabyte)), passes);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "scan-bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
