#include "host/options/KelBridgeEnumValueLiteral.h"
#include "host/options/KelBridgeOptionEnumerationLiteral.h"
#include "host/options/KelBridgeOptionLiteral.h"
#include "host/options/KelOption.h"
#include "host/options/KelOptionList.h"

#include <gtest/gtest.h>

namespace {

class KelOptionTest : public testing::Test {
protected:
    KelBridgeEnumValueLiteral cpp{"C++", "C plus plus"};
    KelBridgeEnumValueLiteral oracle{"Oracle", "Oracle 7"};
    KelTextLiteral* values[2] = {&cpp, &oracle};
    KelBridgeOptionEnumerationLiteral types{"TYPES_ENUM", "", values, 2};
    KelTextLiteral defaultPath{"FILE_DEFAULT", "model.mdl"};
    KelBridgeOptionLiteral typesOption{"TYPES", "Supported types", "Enumerated", "which types", &types, &oracle};
    KelBridgeOptionLiteral fileOption{"FILE", "File", "File", "which file", nullptr, &defaultPath};
    KelBridgeOptionLiteral bareOption{"BARE", "Bare", "String", "", nullptr, nullptr};
};

TEST_F(KelOptionTest, TheDefaultOfAChoiceIsItsIdentifierAndThatOfOthersATextOrNothing) {
    EXPECT_EQ(typesOption.generateOption(false)->getValue(), "Oracle");
    EXPECT_EQ(fileOption.generateOption(true)->getValue(), "model.mdl");
    EXPECT_EQ(bareOption.generateOption(true)->getValue(), "");
}

TEST_F(KelOptionTest, OnlyAFreeValueMayBeNoChoice) {
    KelOptionList list;
    list.addOption(fileOption.generateOption(true));
    list.addOption(typesOption.generateOption(false));
    struct Row {
        const char* name;
        const char* value;
        bool accepted;
        bool acceptedFreely;
    };
    const Row rows[] = {
        {"Supported types", "C++", true, true},
        {"Supported types", "C plus plus", false, true},
        {"Supported types", "", false, true},
        {"File", "a.mdl", true, true},
        {"File", "", true, true},
        {"file", "a.mdl", false, false},
        {"TYPES", "C++", false, false},
        {"", "C++", false, false},
    };
    for (const Row& row : rows) {
        const KelString before = list.getValue(row.name);
        EXPECT_EQ(list.setValue(row.name, row.value), row.accepted) << row.name << row.value;
        EXPECT_EQ(list.getValue(row.name), row.accepted ? KelString(row.value) : before) << row.name << row.value;
        EXPECT_EQ(list.setFreeValue(row.name, row.value), row.acceptedFreely) << row.name << row.value;
        EXPECT_EQ(list.getValue(row.name), row.acceptedFreely ? KelString(row.value) : KelString()) << row.name;
    }
}

TEST_F(KelOptionTest, TheVectorFindsOptionsByNameAndTheListOwnsWhatIsInIt) {
    KelOptionList list;
    list.addOption(fileOption.generateOption(true));
    ASSERT_TRUE(list.getOptions().add(typesOption.generateOption(false).release(), true, nullptr));
    const KelString name("Supported types");
    const KelString unknown("Encoding");
    EXPECT_EQ(list.getOptions().findFirst(&name, nullptr), list.getOptions()[1]);
    EXPECT_EQ(list.findOption(name)->getName(), name);
    EXPECT_EQ(list.getOptions().findFirst(&unknown, nullptr), nullptr);
    EXPECT_EQ(list.getValue(unknown), "");
    list.removeAll();
    EXPECT_EQ(list.getOptions().getCount(), 0);
    EXPECT_EQ(list.findOption(name), nullptr);
    list.addOption(bareOption.generateOption(false)); // left for the list's end
    EXPECT_EQ(list.getOptions().getCount(), 1);
}

} // namespace
