#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelMetadataOrigin.h"
#include "support/ImportedModel.h"

#include <gtest/gtest.h>

namespace {

struct EncodingRow {
    std::string_view encoding;
    std::string_view bytes;               // the name of the class in the file
    std::string_view expected;            // and in the model
    std::string_view origin;              // the encoding noted on the origin
    std::vector<std::string_view> logged; // by the host's messages
};

TEST(EncodingConversionTest, TextsAreConvertedToUtf8) {
    const std::vector<EncodingRow> rows = {
        {"windows-1252", "caf\xe9 \x80", "caf\u00e9 \u20ac", "ibm-5348_P100-1997", {}},
        {"Shift_JIS", "\x83\x4e", "\u30af", "ibm-943_P15A-2003", {}},
        {"unknown", "caf\xe9", "caf\xe9", "", {}},
        {"UTF-8", "caf\xc3\xa9", "caf\u00e9", "UTF-8", {"HOCM_D0003"}},
        {"no such encoding", "caf\xe9", "caf\xe9", "", {"HOCM_W0002 The encoding \"no such encoding\" is not known"}},
        // Of all texts of the model the name of the class alone is wrong; there is one entry, whatever the count.
        {"US-ASCII", "caf\xe9\xe9", "caf\ufffd\ufffd", "US-ASCII", {"HOCM_W0004 1 of 9 texts"}},
    };
    for (const EncodingRow& row : rows) {
        const std::string body = "(object Class_Category \"Logical View\"\n(object Class \"" + std::string(row.bytes) +
                                 "\"\n(object ClassAttribute \"x\"\n";
        const ImportedModel imported = ImportedModel::ofBody(body, {.encoding = row.encoding});
        ASSERT_EQ(imported.failure, "") << row.encoding;
        const auto& package = static_cast<const KelDesignPackage&>(*imported.model.childPackages()[0]);
        EXPECT_EQ(package.modelElements()[0]->getName().view(), row.expected) << row.encoding;
        ASSERT_EQ(imported.model.metadataOrigins().count(), 1);
        EXPECT_EQ(imported.model.metadataOrigins()[0]->sourceEncoding.view(), row.origin) << row.encoding;
        std::size_t hostMessages = 0;
        for (const std::string& line : imported.log.lines) {
            if (line.starts_with("HOCM_")) {
                ASSERT_LT(hostMessages, row.logged.size()) << row.encoding << ": " << line;
                EXPECT_TRUE(line.starts_with(row.logged[hostMessages])) << line;
                ++hostMessages;
            }
        }
        EXPECT_EQ(hostMessages, row.logged.size()) << row.encoding;
    }
}

TEST(EncodingConversionTest, TheOriginSaysWhereTheModelComesFrom) {
    const ImportedModel imported = ImportedModel::ofFile(PETAL_EXAMPLES "/bookshop.mdl");
    EXPECT_EQ(imported.model.getName(), "bookshop");
    ASSERT_EQ(imported.model.metadataOrigins().count(), 1);
    const KelMetadataOrigin& origin = *imported.model.metadataOrigins()[0];
    EXPECT_EQ(origin.sourceFormat, "MDL");
    EXPECT_EQ(origin.sourceKind, "OBJ");
    EXPECT_EQ(origin.sourcePath, PETAL_EXAMPLES "/bookshop.mdl");
    EXPECT_EQ(origin.bridgeId, "bridge-under-test");
    EXPECT_EQ(origin.toolName, "Rational Rose");
    EXPECT_EQ(origin.toolVersions, "4.0");
}

} // namespace
