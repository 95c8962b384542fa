// A file that is read in pieces, with interruptions or with an error: the right model, or the end that the interface
// of the bridge lays down.

#include "support/ImportedModel.h"
#include "support/reading/FaultyFile.h"

#include <gtest/gtest.h>

#include <cerrno>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

void withoutLeakCheck() {
#ifdef __SANITIZE_ADDRESS__
    __lsan_disable();
#endif
}

constexpr const char* path = PETAL_EXAMPLES "/everything.mdl";

class ReadFaultsTest : public testing::Test {
protected:
    const ImportedModel whole = ImportedModel::ofFile(path);

    void expectWhole(const ImportedModel& imported, const std::string& what) const {
        EXPECT_EQ(imported.failure, "") << what;
        EXPECT_EQ(imported.json(), whole.json()) << what;
        EXPECT_EQ(imported.log.lines, whole.log.lines) << what;
    }
};

TEST_F(ReadFaultsTest, ShortReadsGiveTheSameModel) {
    for (const std::size_t bytes : {1U, 2U, 7U, 19U, 20U, 21U, 100U, 4095U}) {
        const FaultyFile file({.bytesPerRead = bytes});
        expectWhole(ImportedModel::ofFile(path), std::to_string(bytes) + " bytes a read");
    }
}

TEST_F(ReadFaultsTest, InterruptedReadsAreMadeAgain) {
    int read = 0;
    for (bool wasInterrupted = true; wasInterrupted; ++read) {
        for (const int times : {1, 3}) {
            const FaultyFile file({.bytesPerRead = 21, .failingRead = read, .error = EINTR, .timesFailing = times});
            expectWhole(ImportedModel::ofFile(path), "read " + std::to_string(read));
            wasInterrupted = FaultyFile::readsMade() > read;
        }
    }
    EXPECT_GT(read, 80);
}

void importWithErrorAt(int read, std::size_t bytesPerRead) {
    withoutLeakCheck(); // the process ends with the import in the middle
    const FaultyFile file({.bytesPerRead = bytesPerRead, .failingRead = read, .error = EIO});
    static_cast<void>(ImportedModel::ofFile(path));
}

using ReadFaultsDeathTest = ReadFaultsTest;

TEST_F(ReadFaultsDeathTest, AnErrorInTheScanEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "fast");
    for (int read = 1; read <= 5; ++read) {
        EXPECT_EXIT(importWithErrorAt(read, 2048), testing::ExitedWithCode(2), "^input in flex scanner failed\n$")
            << read;
    }
}

TEST_F(ReadFaultsTest, AnErrorInTheHeaderIsABadFormat) {
    for (const int read : {0, 1}) { // the second within the header's 20 bytes, too
        {
            const FaultyFile file({.bytesPerRead = 10, .failingRead = read, .error = EIO, .timesFailing = 1000});
            const ImportedModel imported = ImportedModel::ofFile(path);
            EXPECT_EQ(imported.failure, "[QEV_RRSE_F0002] Invalid input file format");
            EXPECT_TRUE(imported.model.getName().isEmpty());
        }
        expectWhole(ImportedModel::ofFile(path), "the next");
    }
}

} // namespace
