#include "petal/ModelOutput.h"

#include "Folder.h"
#include "petal/namedDescriptor.h"
#include "petal/sameFile.h"

#include <csignal>
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
    for (const int signal : {SIGINT, SIGHUP, SIGTERM}) {
        const auto writeAndEnd = [&] {
            std::signal(signal, SIG_DFL);
            const auto output = ModelOutput::open(pathOf("new"));
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

TEST_F(Output, SameFiles) {
    put("a", "");
    put("b", "");
    std::filesystem::create_symlink("a", pathOf("link"));
    std::filesystem::create_hard_link(pathOf("a"), pathOf("other name"));
    struct Row {
        const char* first;
        const char* second;
        bool expected;
    };
    constexpr Row rows[] = {
        {"a", "a", true},          {"a", "link", true},     {"a", "other name", true},
        {"a", "../x/../a", false}, {"a", "b", false},       {"a", "new", false},
        {"new", "./new", true},    {"new", "newer", false}, {"/dev/null", "/dev/null", false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(petal::areSameFile(pathOf(row.first), pathOf(row.second)), row.expected)
            << row.first << " " << row.second;
    }
}

} // namespace
