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

TEST(BridgeSpecificationTest, MayBeInitialisedFromItsOwnTexts) {
    KelBridgeSpecification record;
    const char* extraTexts[] = {"one", "two", nullptr};
    record.initialize("web", "vendor", "tool", "4.0", "method", extraTexts, "5.2", "description", true, false);
    ASSERT_EQ(record.getExtraTexts().size(), 2U);
    record.initialize(record.getVendorName(), "", "", "", "", nullptr, record.getToolWeb(), "", false, true);
    EXPECT_EQ(record.getToolWeb(), "vendor");
    EXPECT_EQ(record.getVersion(), "web");
    EXPECT_TRUE(record.getExtraTexts().empty());
}

} // namespace
