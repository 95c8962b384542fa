// Runs a command, its output to nowhere, and prints what it took: seconds of processor time, seconds on the clock,
// the most memory that it held at once, in bytes, and the page faults that needed no disk. A program of its own, since
// the system counts to a process what the one that started it held at that moment.

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// The process that runs the command; -1 when it cannot be started.
pid_t start(char** command) {
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = -1;
    errno = ::posix_spawnp(&child, command[0], &actions, nullptr, command, environ);
    ::posix_spawn_file_actions_destroy(&actions);
    return errno == 0 ? child : -1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("timed: no command\n", stderr);
        return 2;
    }
    const auto begin = std::chrono::steady_clock::now();
    const pid_t child = start(argv + 1);
    int status = 0;
    rusage used{};
    if (child < 0 || ::wait4(child, &status, 0, &used) != child) {
        std::fprintf(stderr, "timed: %s: %s\n", argv[1], std::strerror(errno));
        return 2;
    }
    const std::chrono::duration<double> onClock = std::chrono::steady_clock::now() - begin;
    std::printf("%.6f %.6f %ld %ld\n", seconds(used.ru_utime) + seconds(used.ru_stime), onClock.count(),
                used.ru_maxrss * 1024, used.ru_minflt);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
