#include "petal/ModelOutput.h"

#include "Folder.h"
#include "petal/Failure.h"
#include "petal/FileUses.h"
#include "petal/OutputFiles.h"
#include "petal/namedDescriptor.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace {

/// What was brought to the disk: the paths, with what the target held at that moment.
struct Synchronised {
    std::string path;
    std::string target;
};
std::vector<Synchronised> synchronised;
std::string watchedTarget;

} // namespace

/// In place of the C library's.
extern "C" int fsync(int descriptor) {
    const auto path = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor));
    std::ostringstream contents;
    contents << std::ifstream(watchedTarget).rdbuf();
    synchronised.push_back({path, contents.str()});
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

namespace {

using petal::ModelOutput;
using Names = std::set<std::string>;

class Output : public InFolder {
protected:
    void write(std::string_view name, std::string_view text) {
        const auto output = ModelOutput::open(pathOf(name));
        output->write(text);
        output->commit();
    }
    [[nodiscard]] unsigned modeOf(std::string_view name) const {
        struct stat status {};
        EXPECT_EQ(::stat(pathOf(name).c_str(), &status), 0);
        return status.st_mode & 07777U;
    }
};

TEST_F(Output, ReplacesAFileAsAWhole) {
    put("old", "before");
    for (const char* name : {"old", "new"}) {
        const std::string before = get(name);
        const auto output = ModelOutput::open(pathOf(name));
        output->write("af");
        output->write("ter");
        EXPECT_EQ(get(name), before) << "is replaced only at the end";
        output->commit();
        EXPECT_EQ(get(name), "after");
    }
    EXPECT_EQ(files(), (Names{"old", "new"}));
}

TEST_F(Output, IsOnTheDiskAheadOfItsNameAndThenTheName) {
    watchedTarget = put("old", "before");
    synchronised.clear();
    write("old", "after");
    ASSERT_EQ(synchronised.size(), 2U);
    EXPECT_NE(synchronised[0].path.find("/.petal-"), std::string::npos) << synchronised[0].path;
    EXPECT_EQ(synchronised[0].target, "before");
    EXPECT_EQ(synchronised[1].path, folder);
    EXPECT_EQ(synchronised[1].target, "after");
}

TEST_F(Output, LeavesNoTraceUnlessCommitted) {
    put("old", "before");
    for (const char* name : {"old", "new"}) {
        ModelOutput::open(pathOf(name))->write("after");
    }
    EXPECT_EQ(files(), Names{"old"});
    EXPECT_EQ(get("old"), "before");
}

TEST_F(Output, LeavesNoTraceWhenTheTargetCannotBeReplaced) {
    auto output = ModelOutput::open(pathOf("target"));
    output->write("text");
    std::filesystem::create_directory(pathOf("target")); // has come into being meanwhile
    EXPECT_THROW(output->commit(), std::system_error);
    output.reset();
    EXPECT_EQ(files(), Names{"target"});
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
                outputs.commit();
            }
        }
        EXPECT_EQ(files(), fails ? (Names{"a", "old"}) : (Names{"a", "last", "new", "old"}));
        EXPECT_EQ(filesBelow("a"), fails ? Names{} : Names{"b/deep"});
        EXPECT_EQ(get("new") + get("old") + get("a/b/deep") + get("last"), fails ? "(none)before(none)(none)" : "1234");
    }
    EXPECT_EQ(modeOf("new"), modeOf("old"));
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

TEST_F(Output, KeepsPermissions) {
    put("old", "before");
    ::chmod(pathOf("old").c_str(), 0640);
    write("old", "after");
    EXPECT_EQ(modeOf("old"), 0640U);
    const mode_t mask = ::umask(027);
    write("new", "after");
    ::umask(mask);
    EXPECT_EQ(modeOf("new"), 0640U);
}

TEST_F(Output, FollowsLinks) {
    std::filesystem::create_directory(pathOf("folder"));
    put("folder/old", "before");
    std::filesystem::create_symlink("folder/old", pathOf("link"));
    std::filesystem::create_symlink("link", pathOf("link to link"));
    std::filesystem::create_symlink("folder/new", pathOf("dangling"));
    write("link to link", "after");
    write("dangling", "created");
    EXPECT_EQ(get("folder/old"), "after");
    EXPECT_EQ(get("folder/new"), "created");
    EXPECT_TRUE(std::filesystem::is_symlink(pathOf("link")) && std::filesystem::is_symlink(pathOf("dangling")));
    std::filesystem::create_symlink("loop", pathOf("loop"));
    EXPECT_THROW(write("loop", ""), std::system_error);
}

TEST_F(Output, WritesToWhatIsNoRegularFile) {
    write("/dev/null", "text");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    try {
        write("/dev/full", "text");
        ADD_FAILURE() << "nothing fits there";
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.code(), std::errc::no_space_on_device);
    }
    EXPECT_THROW(write("", "text"), std::system_error); // the folder itself
    EXPECT_THROW(write("missing/x", "text"), std::system_error);
    EXPECT_EQ(files(), Names{});
}

TEST(NamedDescriptor, KnowsTheirPaths) {
    struct Row {
        const char* path;
        int expected;
    };
    constexpr Row rows[] = {
        {"/dev/stdout", 1}, {"/dev/stderr", 2},   {"/dev/fd/17", 17}, {"/proc/self/fd/1", 1},
        {"/dev/fd/", -1},   {"/dev/fd/1x", -1},   {"/dev/fd/-1", -1}, {"/dev/null", -1},
        {"dev/stdout", -1}, {"/dev/stdout2", -1}, {"", -1},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(petal::namedDescriptor(row.path), row.expected) << row.path;
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
    constexpr Row rows[] = {
        {"a", "a", true, true},
        {"a", "link", true, true},
        {"a", "other name", true, false},
        {"a", "folder/a", true, true},
        {"a", "b", false, false},
        {"a", "../x/../a", false, false},
        {"a", "new", false, false},
        {"new", "./new", true, true},
        {"new", "folder/./new", true, true},
        {"new", "dangling", true, true},
        {"new", "newer", false, false},
        {"none/x", "none/../none/x", true, true},
        {"/dev/null", "/dev/null", false, false},
        {"/dev/stdout", "/dev/stdout", false, false},
    };
    for (const Row& row : rows) {
        const auto refuses = [&](auto step) {
            try {
                petal::FileUses uses;
                step(uses, *row.first == '/' ? row.first : pathOf(row.first),
                     *row.second == '/' ? row.second : pathOf(row.second));
            } catch (const petal::Failure& failure) {
                return failure.getOutcome() == petal::Outcome::wrongUsage;
            }
            return false;
        };
        using Path = const std::string&;
        EXPECT_EQ(refuses([](petal::FileUses& uses, Path one, Path other) { uses.reads(one), uses.writes(other); }),
                  row.losesRead)
            << row.first << " " << row.second;
        EXPECT_EQ(refuses([](petal::FileUses& uses, Path one, Path other) { uses.writes(one), uses.writes(other); }),
                  row.losesWritten)
            << row.first << " " << row.second;
        const bool exists = std::filesystem::exists(pathOf(row.first));
        EXPECT_EQ(
            refuses([](petal::FileUses& uses, Path one, Path other) { uses.writes(other), uses.refuseToLose(one); }),
            row.losesRead && exists)
            << row.first << " " << row.second;
    }
}

} // namespace
