#include "host/bridge/KelImportBridge.h"
#include "host/literals/KelLiteralRegistry.h"
#include "host/log/KelException.h"
#include "literals/QEV_RRSE.h"
#include "support/ImportedModel.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class EventLog final : public KelLog {
public:
    void record(const KelLogEvent& event) override { events.push_back(event); }
    std::vector<KelLogEvent> events;
};

TEST(MessageCatalogTest, AMessageIsLoggedWithItsCodeApart) {
    EventLog log;
    QEV_RRSE::ROS_I_DUPLICATE_ATTRIBUTE.log(log);
    QEV_RRSE::ROS_I_CREATING_PACKAGE.log(log, "{0}{1}"); // taken as it is
    log.setMaximumLevel(3);
    QEV_RRSE::ROS_I_CREATING_PACKAGE.log(log, "unheard");
    constexpr struct {
        const char* code;
        int level;
        const char* text;
    } expected[] = {{"QEV_RRSE_W0019", 3, "Error: Duplicate attribute not added to class"},
                    {"QEV_RRSE_S0013", 4, "Creating Package {0}{1}..."}};
    ASSERT_EQ(log.events.size(), std::size(expected));
    for (std::size_t index = 0; index < std::size(expected); ++index) {
        EXPECT_EQ(log.events[index].getCode(), expected[index].code);
        EXPECT_EQ(log.events[index].getSeverityLevel(), expected[index].level);
        EXPECT_EQ(log.events[index].getText(), expected[index].text);
        EXPECT_TRUE(log.events[index].getFurtherText().isEmpty());
    }
}

TEST(MessageCatalogTest, AMessageIsThrownWithItsCodeInFront) {
    const auto thrown = [](auto fail) -> std::string {
        try {
            fail();
        } catch (const KelException& exception) {
            return exception.what();
        }
        return "nothing";
    };
    EXPECT_EQ(thrown([] { QEV_RRSE::ROS_I_NO_RELATION.throwException(); }),
              "[QEV_RRSE_F0010] Cannot find pre-existing relation");
    EXPECT_EQ(thrown([] { QEV_RRSE::ROS_I_ASSOCIATION_NOT_IN_PACKAGE.throwException("X"); }),
              "[QEV_RRSE_E0011] Cannot add association X to package");
}

TEST(MessageCatalogTest, HostsKnowEveryMessageByItsCode) {
    namespace code = KelImportBridge::message;
    const struct {
        const KelMessageLiteral* literal;
        const char* code;
    } rows[] = {
        {&QEV_RRSE::ROS_I_UNABLE_TO_OPEN_INPUT_FILE, code::unableToOpenInputFile},
        {&QEV_RRSE::ROS_I_BAD_INPUT_FILE_FORMAT, code::badInputFileFormat},
        {&QEV_RRSE::ROS_I_INPUT_MODEL_PARAMETER_IS_NULL, code::inputModelParameterIsNull},
        {&QEV_RRSE::ROS_I_CLASS_NOT_IN_DIAGRAM, code::classNotInDiagram},
        {&QEV_RRSE::ROS_I_DIAGRAM_NOT_CREATED, code::diagramNotCreated},
        {&QEV_RRSE::ROS_I_NO_RELATION, code::noRelation},
        {&QEV_RRSE::ROS_I_ASSOCIATION_NOT_IN_PACKAGE, code::associationNotInPackage},
        {&QEV_RRSE::ROS_I_CLASS_NAME_TO_BE_FOUND, code::classNameToBeFound},
        {&QEV_RRSE::ROS_I_CREATING_PACKAGE, code::creatingPackage},
        {&QEV_RRSE::ROS_I_CREATING_DIAGRAM, code::creatingDiagram},
        {&QEV_RRSE::ROS_I_CREATING_ASSOCIATION, code::creatingAssociation},
        {&QEV_RRSE::ROS_I_CREATING_CLASS, code::creatingClass},
        {&QEV_RRSE::ROS_I_CREATING_ATTRIBUTE, code::creatingAttribute},
        {&QEV_RRSE::ROS_I_CONNECTING_TYPE, code::connectingType},
        {&QEV_RRSE::ROS_I_DUPLICATE_ATTRIBUTE, code::duplicateAttribute},
    };
    std::size_t known = 0;
    for (KelTextLiteral* const* literal = QEV_RRSE::getAllLiterals(); *literal != nullptr; ++literal) {
        if (const auto* message = dynamic_cast<const KelMessageLiteral*>(*literal); message != nullptr) {
            ASSERT_LT(known, std::size(rows)) << message->getFullCode().text();
            EXPECT_EQ(rows[known].literal, message) << "in another order than the catalog's";
            EXPECT_EQ(message->getFullCode(), rows[known].code);
            ++known;
        }
    }
    EXPECT_EQ(known, std::size(rows));
}

TEST(LiteralCatalogTest, FindsALiteralByItsWholeIdentifier) {
    struct Row {
        const char* identifier;
        const KelTextLiteral* literal;
    };
    const Row rows[] = {
        {"IbmRationalRose40ImportDescription", &QEV_RRSE::BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT_DESCRIPTION},
        {"BP_FILE_DEFAULT", &QEV_RRSE::BP_FILE_DEFAULT},
        {"BP_FILE", &QEV_RRSE::BP_FILE},
        {"C++", &QEV_RRSE::BP_SUPPORTED_TYPES_ENUM_C__},
        {"Oracle 7.x & 8", &QEV_RRSE::BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8},
        {"BP_ENCODING", &QEV_RRSE::BP_ENCODING},
        {"1", &QEV_RRSE::ROS_I_UNABLE_TO_OPEN_INPUT_FILE},
        {"19", &QEV_RRSE::ROS_I_DUPLICATE_ATTRIBUTE},
        {"", nullptr},
        {"BP_FIL", nullptr},
        {"BP_FILE_", nullptr},
        {"BP_FILf", nullptr},
        {"bp_file", nullptr},
        {"4", nullptr},
        {"01", nullptr},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(QEV_RRSE::findTextLiteral(row.identifier), row.literal) << row.identifier;
    }
    EXPECT_EQ(QEV_RRSE::findTextLiteral(KelString("BP_FILE\0", 8)), nullptr);
}

TEST(LiteralCatalogTest, IsRegisteredWithTheHost) {
    const KelTextLiteralsCollection* found =
        KelLiteralRegistry::instance().findCollection("KelIbmRationalRose40Import");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->getDocumentId(), "KelIbmRationalRose40Import");
    EXPECT_EQ(found->listAllLiterals(), QEV_RRSE::getAllLiterals());
}

} // namespace
