// Prints what petal takes for each of the files made to hurt, at half and at full size: CPU seconds and the largest
// resident memory, on a stack of 256 KiB. hostile-figures PETAL FOLDER [PART-OF-A-NAME]; the folder takes the files.

#include "support/HostileFiles.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Taken {
    int status; // of the process; 128 and the signal's number if one ended it
    double seconds;
    double megabytes;
};

double secondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

[[noreturn]] void becomePetal(const char* petal, const std::string& model) {
    constexpr rlim_t stackSize = 256 * 1024;
    const rlimit stack{stackSize, stackSize};
    const int nothing = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (::setrlimit(RLIMIT_STACK, &stack) == 0 && ::dup2(nothing, STDOUT_FILENO) >= 0) {
        ::execl(petal, petal, "import", model.c_str(), "--format", "json", "-q", static_cast<char*>(nullptr));
    }
    ::_exit(127);
}

Taken runPetal(const char* petal, const std::string& model) {
    const pid_t child = ::fork();
    if (child == 0) {
        becomePetal(petal, model);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child) {
        return {-1, 0, 0};
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
            secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime), static_cast<double>(usage.ru_maxrss) / 1024};
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: hostile-figures PETAL FOLDER [PART-OF-A-NAME]\n", stderr);
        return EXIT_FAILURE;
    }
    const std::filesystem::path model = std::filesystem::path(argv[2]) / "hostile.mdl";
    const std::string_view wanted = argc > 3 ? argv[3] : "";
    int failed = 0;
    std::puts("| File | Pieces | MB | Seconds | MB of memory |\n|---|---:|---:|---:|---:|");
    for (const HostileFile& file : hostileFiles()) {
        if (std::string_view(file.name).find(wanted) == std::string_view::npos) {
            continue;
        }
        for (const long times : std::array{file.times / 2, file.times}) {
            {
                std::ofstream stream(model, std::ios::binary);
                writeHostileFile(file, times, stream);
            }
            const double size = static_cast<double>(std::filesystem::file_size(model)) / 1e6;
            const Taken taken = runPetal(argv[1], model.string());
            failed += static_cast<int>(taken.status != 0);
            std::printf("| %s | %ld | %.1f | %.2f | %.0f |%s\n", file.name, times, size, taken.seconds, taken.megabytes,
                        taken.status == 0 ? "" : (" status " + std::to_string(taken.status)).c_str());
            std::fflush(stdout);
        }
    }
    std::filesystem::remove(model);
    return failed == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
