#include "host/bridge/HOLST.h"
#include "host/bridge/KelBridgeSpecification.h"
#include "host/bridge/getBridgeSpecification.h"

#include <gtest/gtest.h>

namespace {

TEST(BridgeSpecificationTest, IsFoundByTheIdentifierOfTheBridge) {
    const KelBridgeSpecificationLiteral* literal = getBridgeSpecification("IbmRationalRose40Import");
    ASSERT_EQ(literal, &HOLST::BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT);
    EXPECT_EQ(literal->getInternalCode_DescriptionLiteralId(), "IbmRationalRose40ImportDescription");
    for (const char* unknown : {"", "IbmRationalRose40", "ibmrationalrose40import"}) {
        EXPECT_EQ(getBridgeSpecification(unknown), nullptr) << unknown;
    }
}

TEST(BridgeSpecificationTest, InitialisingReplacesTheWholeRecord) {
    KelBridgeSpecification record;
    const char* extraTexts[] = {"one", "two", nullptr};
    record.initialize("web", "vendor", "tool", "4.0", "method", extraTexts, "5.2", "description", true, false);
    EXPECT_EQ(record.getToolWeb(), "web");
    EXPECT_EQ(record.getVendorName(), "vendor");
    EXPECT_EQ(record.getToolName(), "tool");
    EXPECT_EQ(record.getToolVersions(), "4.0");
    EXPECT_EQ(record.getMethodologySummary(), "method");
    ASSERT_EQ(record.getExtraTexts().size(), 2U);
    EXPECT_EQ(record.getExtraTexts()[1], "two");
    EXPECT_EQ(record.getVersion(), "5.2");
    EXPECT_EQ(record.getDescription(), "description");
    EXPECT_TRUE(record.isExperimental());
    EXPECT_FALSE(record.isLicensed());
    // From the record's own texts, and with none to add.
    record.initialize(record.getVendorName(), "", "", "", "", nullptr, record.getToolWeb(), "", false, true);
    EXPECT_EQ(record.getToolWeb(), "vendor");
    EXPECT_EQ(record.getVersion(), "web");
    EXPECT_TRUE(record.getExtraTexts().empty());
    EXPECT_FALSE(record.isExperimental());
    EXPECT_TRUE(record.isLicensed());
}

} // namespace
