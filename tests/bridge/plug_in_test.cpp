#include "bridge/KelIbmRationalRose40ImportDllInterface.h"
#include "literals/QEV_RRSE.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace {

/// The slot of a virtual operation in the table that its class starts with, as this platform's pointers to members
/// hold it.
template <class Operation>
std::size_t slotOf(Operation operation) {
    std::uintptr_t offsetAndMark = 0;
    std::memcpy(&offsetAndMark, &operation, sizeof offsetAndMark);
    return (offsetAndMark - 1) / sizeof(void*);
}

TEST(PlugInTest, OperationsStandInTheirSlots) {
    using Bridge = KelIbmRationalRose40ImportDllInterface;
    EXPECT_EQ(slotOf(&Bridge::getSpecification), 0U);
    EXPECT_EQ(slotOf(&Bridge::getOptionList), 1U);
    EXPECT_EQ(slotOf(&Bridge::getMappingSpecificationXmlFile), 2U);
    EXPECT_EQ(slotOf(&Bridge::run), 3U);
    EXPECT_EQ(sizeof(Bridge), sizeof(void*));
    EXPECT_EQ(slotOf(&QEV_RRSE::getDocumentId), 0U);
    EXPECT_EQ(slotOf(&QEV_RRSE::listAllLiterals), 1U);
}

TEST(PlugInTest, ThereIsOneInterfaceObject) {
    KelModelBridgeDllInterface* const bridge = getKelIbmRationalRose40ImportInterface();
    ASSERT_NE(bridge, nullptr);
    EXPECT_EQ(getKelIbmRationalRose40ImportInterface(), bridge);
    EXPECT_NE(dynamic_cast<KelModelBridgeImportDllInterface*>(bridge), nullptr);
}

} // namespace
