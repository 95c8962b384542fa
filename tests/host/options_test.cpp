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

TEST_F(KelOptionTest, AnEnumeratedOptionOffersItsChoicesAndDefaultsToAnIdentifier) {
    const auto option = typesOption.generateOption(false);
    const KelOptionDescription& description = option->getDescription();
    EXPECT_EQ(option->getValue(), "Oracle");
    EXPECT_EQ(description.defaultValue, "Oracle");
    EXPECT_EQ(description.name, "Supported types");
    EXPECT_EQ(description.type, "Enumerated");
    EXPECT_EQ(description.text, "which types");
    EXPECT_FALSE(description.required);
    ASSERT_EQ(description.choices.size(), 2U);
    EXPECT_EQ(description.choices[0].identifier, "C++");
    EXPECT_EQ(description.choices[0].label, "C plus plus");
    EXPECT_EQ(description.choices[1].identifier, "Oracle");
}

TEST_F(KelOptionTest, AFileOptionSaysWhichFilesToOfferAndDefaultsToATextOrNothing) {
    const char* extensions[] = {"mdl", "ptl", nullptr};
    const auto option = fileOption.generateOption(true, extensions, "Default", true);
    EXPECT_EQ(option->getValue(), "model.mdl");
    EXPECT_TRUE(option->getDescription().required);
    const KelOptionFiles& files = option->getDescription().files;
    ASSERT_EQ(files.extensions.size(), 2U);
    EXPECT_EQ(files.extensions[0], "mdl");
    EXPECT_EQ(files.extensions[1], "ptl");
    EXPECT_EQ(files.extensionsLabel, "Default");
    EXPECT_TRUE(files.mustExist);
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
