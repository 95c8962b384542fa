// Hostile files: nothing of them is lost, they need no deep stack, and the memory is proportional to the file.

#include "host/model/KelTraversalOperation.h"
#include "support/HostileFiles.h"
#include "support/ImportedModel.h"
#include "support/RepositoryInvariants.h"
#include "support/Written.h"
#include "support/memory/MemoryShortage.h"

#include <gtest/gtest.h>
#include <rapidjson/reader.h>

#include <functional>
#include <ostream>
#include <pthread.h>
#include <sstream>

void PrintTo(const HostileFile& file, std::ostream* stream) {
    *stream << file.name;
}

namespace {

class Counting final : public KelTraversalOperation {
public:
    void post_process(KelObject* /*object*/, void* /*userData*/) override { ++objects; }
    long objects = 0;
};

std::string contentsOf(const HostileFile& file, long times) {
    std::ostringstream stream;
    writeHostileFile(file, times, stream);
    return stream.str();
}

bool isJson(const std::string& text) {
    rapidjson::Reader reader;
    rapidjson::StringStream stream(text.c_str());
    rapidjson::BaseReaderHandler<> nothing;
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    return !reader.Parse<flags>(stream, nothing).IsError();
}

/// Runs the work on a thread with a stack of 256 KiB: recursion to the depth of a file ends the process there.
void onSmallStack(const std::function<void()>& work) {
    constexpr std::size_t stackSize = 256 * 1024;
    pthread_attr_t attributes{};
    pthread_t thread{};
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, stackSize);
    const auto run = [](void* run) -> void* {
        (*static_cast<const std::function<void()>*>(run))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work)), 0);
    pthread_attr_destroy(&attributes);
    pthread_join(thread, nullptr);
}

class HostileFilesTest : public testing::TestWithParam<HostileFile> {};

TEST_P(HostileFilesTest, GiveTheirWholeModelOnASmallStack) {
    const HostileFile& file = GetParam();
    const std::string contents = contentsOf(file, file.testTimes);
    onSmallStack([&] {
        ImportedModel imported = ImportedModel::ofBytes(contents);
        EXPECT_EQ(imported.failure, "");
        Counting counting;
        imported.model.depthTraversal(counting, nullptr);
        EXPECT_EQ(counting.objects, file.objectsPerPiece * file.testTimes + file.otherObjects);
        EXPECT_EQ(brokenInvariant(imported.model), "");
        for (const char* format : {"json", "tree"}) {
            const std::string text = writtenAs(format, imported.model);
            EXPECT_LT(text.size(), 8 * contents.size() + 1'000'000) << format;
            EXPECT_EQ(isJson(text), format == std::string_view("json"));
        }
    });
}

long allocationsOf(const std::string& contents) {
    const long before = allocationCount();
    const ImportedModel imported = ImportedModel::ofBytes(contents);
    return allocationCount() - before;
}

TEST_P(HostileFilesTest, TakeAllocationsInProportion) {
    const HostileFile& file = GetParam();
    const long some = allocationsOf(contentsOf(file, file.testTimes / 2));
    const long twice = allocationsOf(contentsOf(file, file.testTimes));
    EXPECT_LT(twice, 2 * some + some / 4 + 500);
}

INSTANTIATE_TEST_SUITE_P(All, HostileFilesTest, testing::ValuesIn(hostileFiles().begin(), hostileFiles().end()));

} // namespace
