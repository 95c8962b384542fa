#include "bridge/KelIbmRationalRose40ImportDllInterface.h"
#include "host/bridge/KelBridgeSpecification.h"
#include "host/options/KelOption.h"
#include "host/options/KelOptionList.h"

#include <gtest/gtest.h>

namespace {

KelModelBridgeDllInterface& bridge() {
    return *getKelIbmRationalRose40ImportInterface();
}

const KelOptionDescription& descriptionOf(const KelOptionList& options, int index) {
    return static_cast<const KelOption*>(options.getOptions()[index])->getDescription();
}

TEST(OptionsTest, TheListHoldsTheBridgesThreeAndNothingElse) {
    KelOptionList options;
    KelOptionDescription stale;
    stale.name = "Stale";
    options.addOption(std::make_unique<KelOption>(stale));
    bridge().getOptionList(options);
    options.setValue("Supported types", "Oracle 7.x & 8");
    bridge().getOptionList(options); // once more: nothing doubles, and the defaults are back

    struct Row {
        const char* name;
        const char* type;
        const char* defaultValue;
        bool required;
    };
    constexpr Row rows[] = {{"File", "File", "", true},
                            {"Supported types", "Enumerated", "C++", false},
                            {"Encoding", "Enumerated", "windows-1252", false}};
    ASSERT_EQ(options.getOptions().getCount(), 3);
    for (int index = 0; index < 3; ++index) {
        const KelOptionDescription& description = descriptionOf(options, index);
        const Row& row = rows[index];
        EXPECT_EQ(description.name, row.name);
        EXPECT_EQ(description.type, row.type);
        EXPECT_EQ(description.defaultValue, row.defaultValue);
        EXPECT_EQ(description.required, row.required);
        EXPECT_FALSE(description.text.isEmpty());
        EXPECT_EQ(options.getValue(row.name), row.defaultValue);
    }
}

TEST(OptionsTest, OfferChoicesAndFiles) {
    KelOptionList options;
    bridge().getOptionList(options);
    const KelOptionFiles& files = descriptionOf(options, 0).files;
    ASSERT_EQ(files.extensions.size(), 1U);
    EXPECT_EQ(files.extensions[0], "mdl");
    EXPECT_EQ(files.extensionsLabel, "Default");
    EXPECT_TRUE(files.mustExist);
    const auto& types = descriptionOf(options, 1).choices;
    ASSERT_EQ(types.size(), 2U);
    EXPECT_EQ(types[0].identifier, "C++");
    EXPECT_EQ(types[1].identifier, "Oracle 7.x & 8");
    EXPECT_TRUE(options.setValue("Supported types", "Oracle 7.x & 8"));
    EXPECT_FALSE(options.setValue("Supported types", "oracle 7.x & 8"));
    EXPECT_TRUE(options.setValue("Encoding", "unknown"));
    EXPECT_EQ(descriptionOf(options, 2).choices[0].label, "Western European (Windows 1252)");
}

TEST(SpecificationTest, UnderAnyIdentifierTheBridgeDescribesItself) {
    for (const char* id : {"IbmRationalRose40Import", "no such bridge", ""}) {
        KelBridgeSpecification specification;
        specification.initialize("stale", "", "", "", "", nullptr, "", "stale", true, true);
        bridge().getSpecification(id, specification);
        EXPECT_EQ(specification.getVendorName(), "IBM") << id;
        EXPECT_FALSE(specification.getMethodologySummary().isEmpty());
        EXPECT_TRUE(specification.getExtraTexts().empty());
        EXPECT_EQ(specification.getVersion(), "5.2.0 - Jun 12 2007 10:50:18");
        EXPECT_EQ(specification.getDescription(), "") << "found, and empty";
        EXPECT_FALSE(specification.isExperimental());
        EXPECT_FALSE(specification.isLicensed());
    }
    EXPECT_EQ(bridge().getMappingSpecificationXmlFile(), "KelIbmRationalRoseImport");
}

} // namespace
