#include "Shell.h"

#include "support/keepDocument.h"

#include <rapidjson/document.h>

#include <array>
#include <cstdio>
#include <sys/wait.h>

Shell::~Shell() {
    for (const std::string& name : files()) {
        std::error_code none;
        if (!given.contains(name) && std::filesystem::is_regular_file(pathOf(name), none)) {
            keepDocument(get(name));
        }
    }
}

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
    ended.errors = get(errorsPath);
    keepDocument(ended.output);
    keepDocument(ended.errors); // the log
    std::filesystem::remove(errorsPath);
    return ended;
}

void Shell::expectRefusals(const std::string& start, std::initializer_list<Refusal> refusals) const {
    const auto contents = [&] { return run("find . ! -type d | sort; find . -type f -exec cksum {} + | sort").output; };
    const std::string before = contents();
    for (const Refusal& refusal : refusals) {
        SCOPED_TRACE(refusal.command);
        const Ended ended = run(start + refusal.command);
        EXPECT_EQ(ended.status, refusal.status);
        EXPECT_EQ(ended.output, "");
        EXPECT_TRUE(has(ended.errors, refusal.errors));
        EXPECT_EQ(contents(), before);
    }
}

Shell::Lines Shell::statesIn(std::string_view report) const {
    rapidjson::Document document;
    document.Parse(get(report).c_str());
    Lines states;
    if (document.HasParseError()) {
        ADD_FAILURE() << "no report: " << get(report);
        return states;
    }
    for (const auto& file : document["files"].GetArray()) {
        states.push_back(std::string(file["file"].GetString()) + " " + file["state"].GetString());
        if (file.HasMember("reason")) {
            states.back() += std::string(" ") + file["reason"].GetString();
        }
    }
    return states;
}
