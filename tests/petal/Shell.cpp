#include "Shell.h"

#include <sys/wait.h>

#include <array>
#include <cstdio>

Ended Shell::run(const std::string& command) const {
    const std::string errorsPath = folder.string() + ".errors"; // outside of the folder, whose files tests count
    const std::string plugIn = plugIn_.empty() ? "unset PETAL_PLUGIN" : "export PETAL_PLUGIN='" + plugIn_ + "'";
    const std::string script = "cd '" + folder.string() + "'; petal='" PETAL_BINARY "'; export LC_ALL=C.UTF-8; " +
                               plugIn + "; { " + command + "\n} </dev/null 2>'" + errorsPath + "'";
    std::FILE* shell = ::popen(script.c_str(), "r");
    Ended ended{-1, "", ""};
    if (shell == nullptr) {
        return ended;
    }
    std::array<char, 4096> buffer{};
    while (const std::size_t length = std::fread(buffer.data(), 1, buffer.size(), shell)) {
        ended.output.append(buffer.data(), length);
    }
    const int status = ::pclose(shell);
    ended.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    std::ostringstream errors;
    errors << std::ifstream(errorsPath, std::ios::binary).rdbuf();
    ended.errors = errors.str();
    std::filesystem::remove(errorsPath);
    return ended;
}
