#include "Shell.h"
#include "petal/Failure.h"
#include "petal/output/Descriptor.h"
#include "petal/output/FileSystems.h"
#include "petal/output/FileUses.h"
#include "petal/output/ModelOutput.h"
#include "petal/output/OutputFiles.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <span>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace {

/// What was brought to the disk: the paths, with what the target held at that moment.
std::vector<std::pair<std::string, std::string>> synchronised;
std::string watchedTarget;

/// How often a whole file system was, and whether that failed.
int wholes = 0;
bool isWholeBroken = false;

} // namespace

/// In place of the C library's.
extern "C" int syncfs(int descriptor) noexcept {
    ++wholes;
    errno = EIO;
    return isWholeBroken ? -1 : static_cast<int>(::syscall(SYS_syncfs, descriptor));
}
extern "C" int fsync(int descriptor) {
    const auto path = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor));
    std::ostringstream contents;
    contents << std::ifstream(watchedTarget).rdbuf();
    synchronised.emplace_back(path, contents.str());
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

namespace {

using petal::ModelOutput;

class Output : public Shell {
protected:
    void write(std::string_view name, std::string_view text) {
        const auto output = ModelOutput::open(pathOf(name));
        output->write(text);
        output->commit();
    }
    [[nodiscard]] std::filesystem::perms permissions(std::string_view name) const {
        return std::filesystem::status(pathOf(name)).permissions();
    }
};

TEST_F(Output, ReplacesAFileAsAWhole) {
    put("old", "before");
    for (const char* name : {"old", "new"}) {
        const std::string before = get(name);
        ModelOutput::open(pathOf(name))->write("is not committed");
        EXPECT_EQ(get(name), before);
        const auto output = ModelOutput::open(pathOf(name));
        output->write("af");
        output->write("ter");
        EXPECT_EQ(get(name), before) << "is replaced only at the end";
        output->commit();
        EXPECT_EQ(get(name), "after");
    }
    auto output = ModelOutput::open(pathOf("target"));
    output->write("text");
    std::filesystem::create_directory(pathOf("target")); // has come into being meanwhile
    EXPECT_THROW(output->commit(), std::system_error);
    output.reset();
    EXPECT_EQ(files(), (Names{"old", "new"}));
}

TEST_F(Output, IsOnTheDiskAheadOfItsNameAndThenTheName) {
    watchedTarget = put("old", "before");
    synchronised.clear();
    write("old", "after");
    ASSERT_EQ(synchronised.size(), 2U);
    EXPECT_TRUE(has(synchronised[0].first, "/.petal-"));
    EXPECT_EQ(synchronised[0].second, "before");
    EXPECT_EQ(synchronised[1], std::pair(folder.string(), std::string("after")));
}

// The files of an archive are, all at once or, where that is not certain, one by one.
TEST_F(Output, ManyAreOnTheDiskTogether) {
    put("b", "old");
    std::filesystem::permissions(pathOf("b"), std::filesystem::perms(0640));
    petal::FileSystems watching;
    watching.watch(folder);
    petal::FileSystems unaware;
    for (const bool isBroken : {false, true}) {
        isWholeBroken = isBroken;
        wholes = 0;
        petal::TemporaryFile one(pathOf("a"));
        petal::TemporaryFile other(pathOf("b"));
        const std::array<const petal::TemporaryFile*, 2> files{&one, &other};
        synchronised.clear();
        EXPECT_EQ(watching.sync(files), std::vector<std::error_code>(2));
        EXPECT_EQ(wholes, 1);
        EXPECT_EQ(synchronised.size(), isBroken ? 2U : 0U);
        EXPECT_EQ(watching.sync(std::span(files).first(1)), std::vector<std::error_code>(1));
        synchronised.clear();
        EXPECT_EQ(unaware.sync(files), std::vector<std::error_code>(2));
        EXPECT_EQ(synchronised.size(), 2U);
        other.takePlace();
        EXPECT_EQ(permissions("b"), std::filesystem::perms(0640));
    }
    petal::TemporaryFile lost(pathOf("c"));
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    ::dup2(pipe[1], lost.getDescriptor()); // cannot be brought to the disk
    EXPECT_EQ(unaware.sync(std::array<const petal::TemporaryFile*, 1>{&lost}).front(),
              std::error_code(EINVAL, std::generic_category()));
}

TEST_F(Output, LeavesNoTraceWhenASignalEndsTheProgram) {
    for (const int signal : {SIGINT, SIGQUIT, SIGHUP, SIGTERM}) {
        const auto writeAndEnd = [&] {
            constexpr rlimit noCore{0, 0};
            ::setrlimit(RLIMIT_CORE, &noCore);
            std::signal(signal, SIG_DFL);
            const auto report = ModelOutput::open(pathOf("report"));
            auto output = ModelOutput::open(pathOf("model"));
            output.reset();
            output = ModelOutput::open(pathOf("ledger"));
            output->write("text");
            ::raise(signal);
        };
        EXPECT_EXIT(writeAndEnd(), testing::KilledBySignal(signal), "");
        EXPECT_EQ(files(), Names{});
    }
    const auto writeThroughHangUp = [&] {
        std::signal(SIGHUP, SIG_IGN);
        const auto output = ModelOutput::open(pathOf("new"));
        ::raise(SIGHUP);
        output->commit();
        ::_exit(0);
    };
    EXPECT_EXIT(writeThroughHangUp(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(files(), Names{"new"});
}

TEST_F(Output, FilesAreReplacedTogether) {
    put("old", "before");
    isWholeBroken = false;
    for (const bool fails : {true, false}) {
        {
            petal::OutputFiles outputs{std::filesystem::path(folder)};
            outputs.open("new").write("1");
            outputs.open("old").write("2");
            outputs.open("a/b/deep").write("3");
            outputs.open("last").write("4");
            EXPECT_EQ(get("old") + get("new"), "before(none)") << "are replaced only at the end";
            if (fails) {
                std::filesystem::create_directory(pathOf("last")); // has come into being meanwhile
                EXPECT_THROW(outputs.commit(), std::system_error);
                std::filesystem::remove(pathOf("last"));
            } else {
                synchronised.clear();
                wholes = 0;
                outputs.commit();
                EXPECT_EQ(wholes, 2) << "the contents, then the names";
                EXPECT_TRUE(synchronised.empty());
            }
        }
        EXPECT_EQ(files(), fails ? Names{"old"} : (Names{"a/b/deep", "last", "new", "old"}));
        EXPECT_EQ(get("new") + get("old") + get("a/b/deep") + get("last"), fails ? "(none)before(none)(none)" : "1234");
    }
    EXPECT_EQ(permissions("new"), permissions("old"));
    EXPECT_THROW(static_cast<void>(petal::OutputFiles(std::filesystem::path(folder)).open("a")), std::system_error);

    const auto writeAndEnd = [&] {
        constexpr rlimit noCore{0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
        petal::OutputFiles outputs{std::filesystem::path(pathOf("many"))};
        for (int made = 0; made < 20; ++made) {
            outputs.open(std::to_string(made)).write("text");
        }
        ::raise(SIGTERM);
    };
    EXPECT_EXIT(writeAndEnd(), testing::KilledBySignal(SIGTERM), "");
    EXPECT_TRUE(std::filesystem::is_empty(pathOf("many")));
}

TEST_F(Output, KeepsPermissionsAndLinks) {
    put("folder/old", "before");
    ::chmod(pathOf("folder/old").c_str(), 0640);
    std::filesystem::create_symlink("folder/old", pathOf("link"));
    std::filesystem::create_symlink("link", pathOf("link to link"));
    std::filesystem::create_symlink("folder/new", pathOf("dangling"));
    std::filesystem::create_symlink("loop", pathOf("loop"));
    write("link to link", "after");
    const mode_t mask = ::umask(027);
    write("dangling", "created");
    ::umask(mask);
    EXPECT_EQ(get("folder/old"), "after");
    EXPECT_EQ(get("folder/new"), "created");
    for (const char* name : {"folder/old", "folder/new"}) {
        EXPECT_EQ(permissions(name), std::filesystem::perms(0640));
    }
    EXPECT_TRUE(std::filesystem::is_symlink(pathOf("link")) && std::filesystem::is_symlink(pathOf("dangling")));
    EXPECT_THROW(write("loop", ""), std::system_error);
}

TEST_F(Output, WritesToWhatIsNoRegularFile) {
    ModelOutput::open("/dev/null")->write("text");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_THROW(write("", "text"), std::system_error); // the folder itself
    const std::pair<const char*, int> rows[] = {
        {"/dev/stdout", 1}, {"/dev/stderr", 2}, {"/dev/fd/17", 17}, {"/proc/self/fd/1", 1}, {"/dev/fd/", -1},
        {"/dev/fd/1x", -1}, {"/dev/fd/-1", -1}, {"/dev/null", -1},  {"dev/stdout", -1},     {"/dev/stdout2", -1}};
    for (const auto& [path, expected] : rows) {
        EXPECT_EQ(petal::namedDescriptor(path), expected) << path;
    }
}

TEST_F(Output, EachIsAFileOfItsOwn) {
    put("a", "");
    put("b", "");
    std::filesystem::create_symlink("a", pathOf("link"));
    std::filesystem::create_symlink("new", pathOf("dangling"));
    std::filesystem::create_symlink(".", pathOf("folder"));
    std::filesystem::create_hard_link(pathOf("a"), pathOf("other name"));
    struct Row {
        const char* first;
        const char* second;
        bool losesRead; // when the first is read and the second written
        bool losesWritten;
    };
    constexpr Row rows[] = {{"a", "a", true, true},
                            {"a", "link", true, true},
                            {"a", "other name", true, false},
                            {"a", "folder/a", true, true},
                            {"a", "b", false, false},
                            {"a", "../x/../a", false, false},
                            {"a", "new", false, false},
                            {"new", "folder/./new", true, true},
                            {"new", "dangling", true, true},
                            {"new", "newer", false, false},
                            {"none/x", "none/../none/x", true, true},
                            {"/dev/null", "/dev/null", false, false},
                            {"/dev/stdout", "/dev/stdout", false, false}};
    for (const Row& row : rows) {
        const std::string first = *row.first == '/' ? row.first : pathOf(row.first);
        const std::string second = *row.second == '/' ? row.second : pathOf(row.second);
        const auto refuses = [&](auto step) {
            try {
                petal::FileUses uses;
                step(uses);
            } catch (const petal::Failure& failure) {
                return failure.getOutcome() == petal::Outcome::wrongUsage;
            }
            return false;
        };
        using petal::FileUses;
        SCOPED_TRACE(first + " " + second);
        EXPECT_EQ(refuses([&](FileUses& uses) { uses.reads(first), uses.writes(second); }), row.losesRead);
        EXPECT_EQ(refuses([&](FileUses& uses) { uses.writes(first), uses.writes(second); }), row.losesWritten);
        EXPECT_EQ(refuses([&](FileUses& uses) { uses.writes(second), uses.refuseToLose(first); }),
                  row.losesRead && std::filesystem::exists(first));
    }
}

} // namespace
