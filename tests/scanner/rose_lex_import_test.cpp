#include "ScannedModel.h"
#include "host/model/KelClass.h"
#include "scanner/Scanner.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>

namespace rose::test {
namespace {

const std::string package = "(object Class_Category \"Logical View\"\n";

/// A log that cannot take anything.
class BrokenLog final : public KelLog {
    void record(const KelLogEvent&) override { throw 1; }
};

std::string currentClass() {
    return state.aClass != nullptr ? state.aClass->getName().text() : "";
}

TEST(RoseLexImport, ScansFromWhereTheStreamStandsToItsEnd) {
    const ScannedModel model;
    const std::string text = "(object Class_Category \"Use Case View\"\n" + package + "(object Class \"A\"\n";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::tmpfile(), &std::fclose);
    std::fwrite(text.data(), 1, text.size(), stream.get());
    std::fseek(stream.get(), 20, SEEK_SET);
    EXPECT_TRUE(RoseLexImport(stream.get()));
    EXPECT_EQ(currentClass(), "A");
    EXPECT_EQ(std::ftell(stream.get()), static_cast<long>(text.size()));
}

TEST(RoseLexImport, StartsAfreshAfterAScanThatWasCutShort) {
    for (const std::size_t length : {std::size_t{0}, std::size_t{30}, std::size_t{100'000}}) {
        const ScannedModel model;
        ScannedModel::scan(package);
        KelLog* const log = state.localLog;
        BrokenLog broken;
        state.localLog = &broken;
        const std::string tail(length, 'x');
        EXPECT_THROW(ScannedModel::scan("(object Class \"A\"" + tail + "\n(object Class \"Left\"\n"), int);
        state.localLog = log;
        state.aClass = nullptr;
        ScannedModel::scan("");
        EXPECT_EQ(currentClass(), "") << "something was left over";
        ScannedModel::scan("(object Class \"B\"\n");
        EXPECT_EQ(currentClass(), "B");
    }
}

} // namespace
} // namespace rose::test
