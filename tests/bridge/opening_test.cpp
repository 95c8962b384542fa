#include "bridge/KelIbmRationalRose40ImportDllInterface.h"
#include "host/log/KelException.h"
#include "host/options/KelOptionList.h"
#include "support/ImportedModel.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

constexpr const char* badFormat = "[QEV_RRSE_F0002] Invalid input file format";

std::string_view operator""_bytes(const char* text, std::size_t length) {
    return {text, length};
}

TEST(OpeningTest, TheHeaderStandsWithinTheFirstTwentyBytes) {
    struct Row {
        const char* what;
        std::string_view bytes;
        bool isModelFile;
    };
    const Row rows[] = {
        {"the usual layout", "\n(object Petal\n    version 40)\n", true},
        {"at the very beginning", "(object Petal\n    version 40)\n", true},
        {"nothing else", "(object Petal", true},
        {"as a part of a longer word", "(object Petals\n", true},
        {"at byte 7, the last place", "1234567(object Petal\n", true},
        {"at byte 7, at the end of the file", "1234567(object Petal", true},
        {"at byte 8", "12345678(object Petal\n", false},
        {"12 bytes", "(object Peta", false},
        {"no bytes", "", false},
        {"another spelling", "(Object Petal\n    version 40)\n", false},
        {"a tab in it", "(object\tPetal\n    version 40)\n", false},
        {"NUL in front", "\0(object Petal\n"_bytes, false},
        {"NUL inside", "(object\0 Petal\n"_bytes, false},
        {"NUL instead of its last letter", "(object Peta\0l\n"_bytes, false},
        {"NUL behind", "(object Petal\0\0\0"_bytes, true},
        {"no model file at all", "#!/bin/sh\nexit 0\n#  (object Petal\n", false},
    };
    for (const Row& row : rows) {
        const ImportedModel imported = ImportedModel::ofBytes(row.bytes);
        EXPECT_EQ(imported.failure, row.isModelFile ? "" : badFormat) << row.what;
        EXPECT_EQ(imported.model.getName(), row.isModelFile ? "model" : "") << row.what;
        EXPECT_TRUE(imported.log.lines.empty()) << row.what;
    }
}

TEST(OpeningTest, TheScanStartsAtTheTwentiethByte) {
    struct Row {
        std::string_view bytes;
        int packages;
    };
    constexpr Row rows[] = {
        {"(object Petal      \n(object Class_Category \"Logical View\"\n", 1},
        {"(object Petal       (object Class_Category \"Logical View\"\n", 1},
        {"(object Petal      (object Class_Category \"Logical View\"\n", 0}, // its first byte is the header's last
        {"(object Petal\n(object Class_Category \"Logical View\"\n", 0},
    };
    for (const Row& row : rows) {
        const ImportedModel imported = ImportedModel::ofBytes(row.bytes);
        EXPECT_EQ(imported.failure, "");
        EXPECT_EQ(imported.model.childPackages().count(), row.packages) << row.bytes;
    }
}

TEST(OpeningTest, WhatCannotBeOpenedIsNamed) {
    const std::string folder = std::filesystem::temp_directory_path().string();
    struct Row {
        const char* what;
        std::string path;
        std::string failure;
    };
    const Row rows[] = {
        {"missing", "/nowhere/a {0}.mdl", "[QEV_RRSE_F0001] Unable to open input file : /nowhere/a {0}.mdl"},
        {"missing, in any letters", "/nowhere/\xc3\xa9.mdl",
         "[QEV_RRSE_F0001] Unable to open input file : /nowhere/\xc3\xa9.mdl"},
        {"not given", "", "[QEV_RRSE_F0001] Unable to open input file : "},
        {"a file taken for a folder", PETAL_EXAMPLES "/bookshop.mdl/a",
         "[QEV_RRSE_F0001] Unable to open input file : " PETAL_EXAMPLES "/bookshop.mdl/a"},
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

TEST(OpeningTest, AListWithoutAFileGivesNone) {
    KelOptionList options;
    KelModel model;
    KeptLog log;
    KelIbmRationalRose40ImportDllInterface bridge;
    try {
        bridge.run("bridge-under-test", model, options, log);
        ADD_FAILURE() << "imported something";
    } catch (const KelException& exception) {
        EXPECT_STREQ(exception.what(), "[QEV_RRSE_F0001] Unable to open input file : ");
    }
}

} // namespace
