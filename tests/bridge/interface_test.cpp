// The bridge as its host sees it before an import: the interface object, its options, specification and messages.

#include "bridge/KelIbmRationalRose40ImportDllInterface.h"
#include "host/bridge/KelBridgeSpecification.h"
#include "host/bridge/KelImportBridge.h"
#include "host/literals/KelLiteralRegistry.h"
#include "host/options/KelOption.h"
#include "host/options/KelOptionList.h"
#include "literals/QEV_RRSE.h"
#include "support/ImportedModel.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace {

KelModelBridgeDllInterface& bridge() {
    return *getKelIbmRationalRose40ImportInterface();
}

/// The slot of a virtual operation in the table that its class starts with, as this platform's pointers to members
/// hold it.
template <class Operation>
std::size_t slotOf(Operation operation) {
    std::uintptr_t offsetAndMark = 0;
    std::memcpy(&offsetAndMark, &operation, sizeof offsetAndMark);
    return (offsetAndMark - 1) / sizeof(void*);
}

TEST(Interface, HasOneObjectWithItsOperationsInTheirSlots) {
    using Bridge = KelIbmRationalRose40ImportDllInterface;
    EXPECT_EQ(slotOf(&Bridge::getSpecification), 0U);
    EXPECT_EQ(slotOf(&Bridge::getOptionList), 1U);
    EXPECT_EQ(slotOf(&Bridge::getMappingSpecificationXmlFile), 2U);
    EXPECT_EQ(slotOf(&Bridge::run), 3U);
    EXPECT_EQ(sizeof(Bridge), sizeof(void*));
    EXPECT_EQ(slotOf(&QEV_RRSE::getDocumentId), 0U);
    EXPECT_EQ(slotOf(&QEV_RRSE::listAllLiterals), 1U);
    EXPECT_NE(dynamic_cast<KelModelBridgeImportDllInterface*>(&bridge()), nullptr);
    EXPECT_EQ(&bridge(), getKelIbmRationalRose40ImportInterface());
}

/// The description of each option in a line, with its choices or file extensions.
std::string described(const KelOptionList& options) {
    std::string lines;
    for (int index = 0; index < options.getOptions().getCount(); ++index) {
        const KelOptionDescription& each = static_cast<const KelOption*>(options.getOptions()[index])->getDescription();
        EXPECT_FALSE(each.text.isEmpty());
        lines += std::string(each.name.view()) + ", " + each.type.text() + (each.required ? ", required" : "") + ": " +
                 each.defaultValue.text();
        for (const KelString& extension : each.files.extensions) {
            lines += std::string(" [") + extension.text() + ", " + each.files.extensionsLabel.text() +
                     (each.files.mustExist ? ", must exist]" : "]");
        }
        for (std::size_t choice = 0; choice < std::min<std::size_t>(2, each.choices.size()); ++choice) {
            lines += std::string(" [") + each.choices[choice].identifier.text() + "]";
        }
        lines += "\n";
    }
    return lines;
}

TEST(Options, AreTheBridgesThree) {
    KelOptionList options;
    KelOptionDescription stale;
    stale.name = "Stale";
    options.addOption(std::make_unique<KelOption>(stale));
    bridge().getOptionList(options);
    EXPECT_TRUE(options.setValue("Supported types", "Oracle 7.x & 8"));
    EXPECT_FALSE(options.setValue("Supported types", "oracle 7.x & 8"));
    EXPECT_TRUE(options.setValue("Encoding", "unknown"));
    bridge().getOptionList(options); // again: no duplicates, and the defaults are back
    EXPECT_EQ(described(options), R"(File, File, required:  [mdl, Default, must exist]
Supported types, Enumerated: C++ [C++] [Oracle 7.x & 8]
Encoding, Enumerated: windows-1252 [windows-1252] [windows-1256]
)");
    EXPECT_EQ(options.getValue("Supported types"), "C++");
}

TEST(Specification, DescribesTheBridgeUnderAnyIdentifier) {
    for (const char* id : {"IbmRationalRose40Import", "no such bridge"}) {
        KelBridgeSpecification specification;
        specification.initialize("stale", "", "", "", "", nullptr, "", "stale", true, true);
        bridge().getSpecification(id, specification);
        EXPECT_EQ(specification.getVendorName(), "IBM") << id;
        EXPECT_FALSE(specification.getMethodologySummary().isEmpty());
        EXPECT_TRUE(specification.getExtraTexts().empty());
        EXPECT_EQ(specification.getVersion(), "5.2.0 - Jun 12 2007 10:50:18");
        EXPECT_EQ(specification.getDescription(), "") << "found, and empty";
        EXPECT_FALSE(specification.isExperimental() || specification.isLicensed());
    }
    EXPECT_EQ(bridge().getMappingSpecificationXmlFile(), "KelIbmRationalRoseImport");
}

TEST(Messages, AreLoggedAndThrownWithTheirCodes) {
    KeptLog log;
    QEV_RRSE::ROS_I_DUPLICATE_ATTRIBUTE.log(log);
    QEV_RRSE::ROS_I_CREATING_PACKAGE.log(log, "{0}{1}"); // inserted as it is
    log.setMaximumLevel(3);
    QEV_RRSE::ROS_I_CREATING_PACKAGE.log(log, "above the maximum level");
    EXPECT_EQ(log.lines, (std::vector<std::string>{"QEV_RRSE_W0019 Error: Duplicate attribute not added to class",
                                                   "QEV_RRSE_S0013 Creating Package {0}{1}..."}));
    try {
        QEV_RRSE::ROS_I_ASSOCIATION_NOT_IN_PACKAGE.throwException("X");
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::exception& exception) {
        EXPECT_STREQ(exception.what(), "[QEV_RRSE_E0011] Cannot add association X to package");
    }
}

TEST(Messages, AreKnownToHostsByTheirCodes) {
    using namespace KelImportBridge::message;
    const char* const codes[] = {unableToOpenInputFile,   badInputFileFormat,  inputModelParameterIsNull,
                                 classNotInDiagram,       diagramNotCreated,   noRelation,
                                 associationNotInPackage, classNameToBeFound,  creatingPackage,
                                 creatingDiagram,         creatingAssociation, creatingClass,
                                 creatingAttribute,       connectingType,      duplicateAttribute};
    std::size_t known = 0;
    for (KelTextLiteral* const* literal = QEV_RRSE::getAllLiterals(); *literal != nullptr; ++literal) {
        if (const auto* message = dynamic_cast<const KelMessageLiteral*>(*literal); message != nullptr) {
            ASSERT_LT(known, std::size(codes)) << message->getFullCode().text();
            EXPECT_EQ(message->getFullCode(), codes[known++]) << "in the order of the catalog";
        }
    }
    EXPECT_EQ(known, std::size(codes));
}

TEST(Literals, AreRegisteredAndFoundByTheirWholeIdentifiers) {
    EXPECT_EQ(QEV_RRSE::findTextLiteral("BP_FILE"), &QEV_RRSE::BP_FILE);
    EXPECT_EQ(QEV_RRSE::findTextLiteral("19"), &QEV_RRSE::ROS_I_DUPLICATE_ATTRIBUTE);
    for (const char* identifier : {"", "BP_FIL", "BP_FILE_", "BP_FILf", "bp_file", "4", "01"}) {
        EXPECT_EQ(QEV_RRSE::findTextLiteral(identifier), nullptr) << identifier;
    }
    EXPECT_EQ(QEV_RRSE::findTextLiteral(KelString("BP_FILE\0", 8)), nullptr);
    const auto* found = KelLiteralRegistry::instance().findCollection("KelIbmRationalRose40Import");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->getDocumentId(), "KelIbmRationalRose40Import");
    EXPECT_EQ(found->listAllLiterals(), QEV_RRSE::getAllLiterals());
}

} // namespace
