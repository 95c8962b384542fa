// The small services that a bridge is given: messages, literals, options, its own specification.

#include "host/bridge/KelBridgeSpecification.h"
#include "host/bridge/getBridgeSpecification.h"
#include "host/literals/KelLiteralRegistry.h"
#include "host/literals/KelParameterizedTextLiteral.h"
#include "host/literals/KelTextLiteralsCollection.h"
#include "host/literals/messageCode.h"
#include "host/log/KelException.h"
#include "host/log/Severity.h"
#include "host/options/KelBridgeEnumValueLiteral.h"
#include "host/options/KelBridgeOptionEnumerationLiteral.h"
#include "host/options/KelBridgeOptionLiteral.h"
#include "host/options/KelOption.h"
#include "host/options/KelOptionList.h"

#include <gtest/gtest.h>

#include <optional>

class KelDOMElement {};

namespace {

TEST(Messages, SeveritiesAndCodes) {
    for (int level = 1; level <= 5; ++level) {
        EXPECT_EQ(severityLevel(severityWord(level)), level);
    }
    for (const char* unknown : {"", "fatal", "FATAL ", "FATA"}) {
        EXPECT_EQ(severityLevel(unknown), 0) << unknown;
    }
    EXPECT_TRUE(severityWord(0) == nullptr && severityWord(6) == nullptr);
    const char* rows[][4] = {
        {"QEV_RRSE", "FATAL", "1", "QEV_RRSE_F0001"},
        {"X", "DEBUG", "1234", "X_D1234"},
        {"X", "DEBUG", "12345", "X_D12345"},
        {"QEV_RRSE", "WARNING", "", "QEV_RRSE_W0000"},
        {"X", "", "7", "X_0007"},
    };
    for (const auto& [prefix, severity, code, expected] : rows) {
        EXPECT_EQ(fullMessageCode(prefix, severity, code), expected);
    }
    std::optional<KelException> original(KelString("no \0 end", 8));
    const KelException copy(*original);
    original.reset();
    EXPECT_EQ(copy.getMessage(), KelString("no \0 end", 8));
    EXPECT_STREQ(copy.what(), "no ");
}

TEST(Literals, ParametersThatAreNotSetOrNotThereAreEmptyOrStay) {
    KelParameterizedTextLiteral literal("ID", "text");
    const KelDOMElement entry;
    literal.update("ignored", nullptr);
    EXPECT_EQ(literal.getText(), "text");
    literal.update("{0}{1}{2}{0", &entry);
    KelTextParameters parameters = literal.prapareForParameters();
    literal.setParameterValue(parameters, 1, "{0}");
    literal.setParameterValue(parameters, -1, "ignored");
    EXPECT_EQ(literal.createParametrizedText(parameters), "{0}{0}{2}{0");
}

class OneLiteral final : public KelTextLiteralsCollection {
public:
    const KelString& getDocumentId() const override { return documentId_; }
    KelTextLiteral* const* listAllLiterals() const override { return list_; }

private:
    KelString documentId_{"Document"};
    KelTextLiteral literal_{"ID", "text"};
    KelTextLiteral* list_[2] = {&literal_, nullptr};
};

TEST(Literals, TheRegistryHoldsACollectionAsLongAsItLives) {
    const KelLiteralRegistry& registry = KelLiteralRegistry::instance();
    std::optional<OneLiteral> first(std::in_place);
    EXPECT_EQ(registry.findCollection("Document"), nullptr);
    EXPECT_TRUE(first->init() && first->init());
    EXPECT_FALSE(OneLiteral().init());
    EXPECT_EQ(registry.findCollection("Document"), &*first) << "the refused one took the other out";
    first.reset();
    EXPECT_EQ(registry.findCollection("Document"), nullptr);
}

// Which values are taken, the fuzz target `literals` tries.
TEST(Options, OnlyAFreeValueMayBeNoChoice) {
    KelBridgeEnumValueLiteral cpp("C++", "C plus plus");
    KelTextLiteral* values[] = {&cpp};
    const KelBridgeOptionEnumerationLiteral types("TYPES_ENUM", "", values, 1);
    const KelBridgeOptionLiteral typesOption("TYPES", "Types", "Enumerated", "which types", &types, &cpp);
    const KelBridgeOptionLiteral bareOption("BARE", "Bare", "String", "", nullptr, nullptr);
    KelOptionList list;
    list.addOption(typesOption.generateOption(false));
    EXPECT_EQ(list.getValue("Types"), "C++");
    EXPECT_FALSE(list.setValue("Types", "C plus plus") || list.setFreeValue("types", "C++"));
    EXPECT_TRUE(list.setFreeValue("Types", "C plus plus"));
    EXPECT_EQ(list.getValue("Types"), "C plus plus");
    list.removeAll();
    EXPECT_EQ(list.findOption("Types"), nullptr);
    list.addOption(bareOption.generateOption(true)); // left for the destructor
    EXPECT_EQ(list.getValue("Bare"), "");
}

TEST(BridgeSpecification, MayBeInitialisedFromItsOwnTexts) {
    KelBridgeSpecification record;
    const char* extraTexts[] = {"one", "two", nullptr};
    record.initialize("web", "vendor", "tool", "4.0", "method", extraTexts, "5.2", "description", true, false);
    ASSERT_EQ(record.getExtraTexts().size(), 2U);
    record.initialize(record.getVendorName(), "", "", "", "", nullptr, record.getToolWeb(), "", false, true);
    EXPECT_EQ(record.getToolWeb(), "vendor");
    EXPECT_EQ(record.getVersion(), "web");
    EXPECT_TRUE(record.getExtraTexts().empty());
    EXPECT_EQ(getBridgeSpecification("ibmrationalrose40import"), nullptr);
}

} // namespace
