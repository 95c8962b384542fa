#include "support/ImportedModel.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

constexpr const char* badFormat = "[QEV_RRSE_F0002] Invalid input file format";

std::string_view operator""_bytes(const char* text, std::size_t length) {
    return {text, length};
}

TEST(Opening, TheHeaderIsWithinTheFirstTwentyBytes) {
    struct Row {
        const char* what;
        std::string_view bytes;
        bool isModelFile;
    };
    const Row rows[] = {
        {"the usual layout", "\n(object Petal\n    version 40)\n", true},
        {"at byte 7, at the end of the file", "1234567(object Petal", true},
        {"at byte 8", "12345678(object Petal\n", false},
        {"12 bytes", "(object Peta", false},
        {"another spelling", "(Object Petal\n    version 40)\n", false},
        {"NUL before it", "\0(object Petal\n"_bytes, false},
        {"NUL instead of its last letter", "(object Peta\0l\n"_bytes, false},
    };
    for (const Row& row : rows) {
        const ImportedModel imported = ImportedModel::ofBytes(row.bytes);
        EXPECT_EQ(imported.failure, row.isModelFile ? "" : badFormat) << row.what;
        EXPECT_EQ(imported.model.getName(), row.isModelFile ? "model" : "") << row.what;
        EXPECT_TRUE(imported.log.lines.empty()) << row.what;
    }
}

TEST(Opening, TheScanStartsAtTheTwentiethByte) {
    struct Row {
        std::string_view bytes;
        int packages;
    };
    constexpr Row rows[] = {
        {"(object Petal       (object Class_Category \"Logical View\"\n", 1},
        {"(object Petal      (object Class_Category \"Logical View\"\n", 0}, // its first byte is the header's last
    };
    for (const Row& row : rows) {
        const ImportedModel imported = ImportedModel::ofBytes(row.bytes);
        EXPECT_EQ(imported.failure, "");
        EXPECT_EQ(imported.model.childPackages().count(), row.packages) << row.bytes;
    }
}

TEST(Opening, AFailureNamesTheFile) {
    const std::string folder = std::filesystem::temp_directory_path().string();
    struct Row {
        const char* what;
        std::string path;
        std::string failure;
    };
    const Row rows[] = {
        {"missing", "/nowhere/a {0}.mdl", "[QEV_RRSE_F0001] Unable to open input file : /nowhere/a {0}.mdl"},
        {"not given", "", "[QEV_RRSE_F0001] Unable to open input file : "},
        {"a folder", folder, badFormat},
    };
    for (const Row& row : rows) {
        const ImportedModel imported = ImportedModel::ofFile(row.path);
        EXPECT_EQ(imported.failure, row.failure) << row.what;
        EXPECT_TRUE(imported.log.lines.empty()) << "thrown, not logged as well";
        EXPECT_TRUE(imported.model.getName().isEmpty());
        EXPECT_TRUE(imported.model.metadataOrigins().isEmpty());
    }
}

} // namespace
