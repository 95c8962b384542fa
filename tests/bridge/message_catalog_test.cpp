#include "host/literals/KelLiteralRegistry.h"
#include "host/log/KelException.h"
#include "literals/QEV_RRSE.h"
#include "support/ImportedModel.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Message {
    const KelMessageLiteral& literal;
    const char* code;
    const char* fullCode;
    const char* severity;
    int level;
    const char* text;
    const char* textOfX; // with the parameter "X"; null for a message without one
};

const Message catalog[] = {
    {QEV_RRSE::ROS_I_UNABLE_TO_OPEN_INPUT_FILE, "1", "QEV_RRSE_F0001", "FATAL", 1, "Unable to open input file : {0}",
     "Unable to open input file : X"},
    {QEV_RRSE::ROS_I_BAD_INPUT_FILE_FORMAT, "2", "QEV_RRSE_F0002", "FATAL", 1, "Invalid input file format", nullptr},
    {QEV_RRSE::ROS_I_INPUT_MODEL_PARAMETER_IS_NULL, "3", "QEV_RRSE_F0003", "FATAL", 1, "Input model parameter is null",
     nullptr},
    {QEV_RRSE::ROS_I_CLASS_NOT_IN_DIAGRAM, "5", "QEV_RRSE_F0005", "FATAL", 1, "Class not found in diagram", nullptr},
    {QEV_RRSE::ROS_I_DIAGRAM_NOT_CREATED, "9", "QEV_RRSE_F0009", "FATAL", 1, "Diagram not yet created", nullptr},
    {QEV_RRSE::ROS_I_NO_RELATION, "10", "QEV_RRSE_F0010", "FATAL", 1, "Cannot find pre-existing relation", nullptr},
    {QEV_RRSE::ROS_I_ASSOCIATION_NOT_IN_PACKAGE, "11", "QEV_RRSE_E0011", "ERROR", 2,
     "Cannot add association {0} to package", "Cannot add association X to package"},
    {QEV_RRSE::ROS_I_CLASS_NAME_TO_BE_FOUND, "12", "QEV_RRSE_D0012", "DEBUG", 5, "Class name to be found is {0}",
     "Class name to be found is X"},
    {QEV_RRSE::ROS_I_CREATING_PACKAGE, "13", "QEV_RRSE_S0013", "STATUS", 4, "Creating Package {0}...",
     "Creating Package X..."},
    {QEV_RRSE::ROS_I_CREATING_DIAGRAM, "14", "QEV_RRSE_S0014", "STATUS", 4, "Creating Class Diagram {0}...",
     "Creating Class Diagram X..."},
    {QEV_RRSE::ROS_I_CREATING_ASSOCIATION, "15", "QEV_RRSE_D0015", "DEBUG", 5, "Creating association class {0}...",
     "Creating association class X..."},
    {QEV_RRSE::ROS_I_CREATING_CLASS, "16", "QEV_RRSE_D0016", "DEBUG", 5, "Creating class {0}...",
     "Creating class X..."},
    {QEV_RRSE::ROS_I_CREATING_ATTRIBUTE, "17", "QEV_RRSE_D0017", "DEBUG", 5, "Creating attribute {0}...",
     "Creating attribute X..."},
    {QEV_RRSE::ROS_I_CONNECTING_TYPE, "18", "QEV_RRSE_D0018", "DEBUG", 5, "Connecting Type {0}...",
     "Connecting Type X..."},
    {QEV_RRSE::ROS_I_DUPLICATE_ATTRIBUTE, "19", "QEV_RRSE_W0019", "WARNING", 3,
     "Error: Duplicate attribute not added to class", nullptr},
};
constexpr std::size_t textsBeforeMessages = 8;

class EventLog final : public KelLog {
public:
    void record(const KelLogEvent& event) override { events.push_back(event); }
    std::vector<KelLogEvent> events;
};

/// Calls `use(message)` or, for a message with a parameter, `use(message, "X")`.
template <class Use>
void useMessage(const Message& row, Use use) {
    if (row.textOfX == nullptr) {
        use(dynamic_cast<const QEV_RRSE::MessageInstance&>(row.literal));
    } else {
        use(dynamic_cast<const QEV_RRSE::MessageInstance_String&>(row.literal), "X");
    }
}

TEST(MessageCatalogTest, HoldsWhatTheHostMayShow) {
    KelTextLiteral* const* listed = QEV_RRSE::getAllLiterals() + textsBeforeMessages;
    for (const Message& row : catalog) {
        EXPECT_EQ(*listed++, &row.literal) << row.fullCode;
        EXPECT_EQ(row.literal.getCode(), row.code);
        EXPECT_EQ(row.literal.getText(), row.text);
        EXPECT_EQ(row.literal.getSeverity(), row.severity);
        EXPECT_EQ(row.literal.getSeverityLevel(), row.level);
        EXPECT_EQ(row.literal.getFullCode(), row.fullCode);
        EXPECT_EQ(row.literal.getFullCode().length(), 14);
    }
    EXPECT_EQ(*listed, nullptr);
}

TEST(MessageCatalogTest, AMessageIsLoggedWithItsCodeApart) {
    for (const Message& row : catalog) {
        const char* text = row.textOfX != nullptr ? row.textOfX : row.text;
        EventLog log;
        useMessage(row, [&](const auto& message, auto... value) {
            message.log(log, value...);
            EXPECT_EQ(message.toString(value...), text);
            log.setMaximumLevel(row.level - 1);
            message.log(log, value...); // to a log that does not listen
        });
        ASSERT_EQ(log.events.size(), 1U) << row.fullCode;
        EXPECT_EQ(log.events[0].getText(), text);
        EXPECT_EQ(log.events[0].getCode(), row.fullCode);
        EXPECT_EQ(log.events[0].getSeverityLevel(), row.level);
        EXPECT_TRUE(log.events[0].getFurtherText().isEmpty());
    }
}

TEST(MessageCatalogTest, AMessageIsThrownWithItsCodeInFront) {
    for (const Message& row : catalog) {
        const std::string expected =
            std::string("[") + row.fullCode + "] " + (row.textOfX != nullptr ? row.textOfX : row.text);
        useMessage(row, [&](const auto& message, auto... value) {
            EXPECT_EQ(message.getMessage(value...).view(), expected);
            try {
                message.throwException(value...);
            } catch (const KelException& exception) {
                EXPECT_EQ(exception.getMessage().view(), expected);
            }
        });
    }
    // A parameter is taken as it is.
    EXPECT_EQ(QEV_RRSE::ROS_I_CREATING_CLASS.toString("{0}{1}"), "Creating class {0}{1}...");
    EXPECT_EQ(QEV_RRSE::ROS_I_CREATING_CLASS.toString(""), "Creating class ...");
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
        {"BP_SUPPORTED_TYPES_ENUM", &QEV_RRSE::BP_SUPPORTED_TYPES_ENUM},
        {"BP_SUPPORTED_TYPES", &QEV_RRSE::BP_SUPPORTED_TYPES},
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
    EXPECT_EQ(QEV_RRSE::BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT_DESCRIPTION.toString(), "");
    for (std::size_t index = 0; index < textsBeforeMessages; ++index) {
        EXPECT_EQ(QEV_RRSE::getAllLiterals()[index], rows[index].literal) << index;
    }
}

TEST(LiteralCatalogTest, IsRegisteredWithTheHost) {
    const KelTextLiteralsCollection* found =
        KelLiteralRegistry::instance().findCollection("KelIbmRationalRose40Import");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->getDocumentId(), "KelIbmRationalRose40Import");
    EXPECT_EQ(found->listAllLiterals(), QEV_RRSE::getAllLiterals());
}

} // namespace
