// Properties of building a model that its outline does not show.

#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "support/ImportedModel.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

TEST(Building, QualifiersTakePositionsAfterTheAttributesOfTheirClasses) {
    const ImportedModel imported = importLogicalView(R"(
(object Class "Bank")
object ClassAttribute "z"
(object Class "Product")
object ClassAttribute "y"
object ClassAttribute "b"
 (object Association "a")
  (object Role "bank" supplier "Bank" keys (list (object ClassAttribute "a")
(object ClassAttribute "b")
(object ClassAttribute "c"))
  (object Role "product" supplier "Product")
)");
    std::string places;
    const auto& package = static_cast<const KelDesignPackage&>(*imported.model.childPackages()[0]);
    for (const int number : {0, 1}) {
        for (const KelAttribute* attribute :
             static_cast<const KelClass*>(package.modelElements()[number])->attributes()) {
            places += attribute->getName().text() + std::to_string(attribute->position) + " ";
        }
    }
    // The waiting ones move from the last to the first.
    EXPECT_EQ(places, "a1 b2 c3 z0 a3 b1 c2 y0 ");
}

TEST(Building, ValuesOfAnEnumerationHavePositionsAcrossItsDefinitions) {
    const ImportedModel imported = importLogicalView(R"(
(object Class "A"
(object ClassAttribute "a" type "Colour"
(object Class "Colour") (value Text "{A,B}")
(object Class "Colour") (value Text "{C,D}")
)");
    const std::string json = imported.json();
    EXPECT_LT(json.find("\"position\": 1"), json.find("\"position\": 2"));
    EXPECT_NE(json.find("\"position\": 3"), std::string::npos) << json;
}

TEST(Building, IsLoggedUnderTheNamesOfTheFile) {
    const ImportedModel imported = importLogicalView(R"(
(object Class "Logical View::A"
    (object ClassAttribute "x"
        type "Logical View::T"
    (object ClassAttribute "x"
    (object Operation "f"
        result "U"
 (object Association "a"
  (object Role "r" supplier "A"
  (object Role "s" supplier "A"
    AssociationClass "Logical View::X"
(object ClassDiagram "D"
)");
    const std::vector<std::string> lines(imported.log.lines.begin(), imported.log.lines.begin() + 7);
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "QEV_RRSE_S0013 Creating Package Logical View...",
                         "QEV_RRSE_D0016 Creating class Logical View::A...",
                         "QEV_RRSE_D0017 Creating attribute x...",
                         "QEV_RRSE_D0018 Connecting Type Logical View::T...",
                         "QEV_RRSE_D0017 Creating attribute x...",
                         "QEV_RRSE_D0015 Creating association class X...",
                         "QEV_RRSE_S0014 Creating Class Diagram D...",
                     }));
}

// Objects without an owner are deleted at the end, one after the other; a linear search for each would take minutes.
TEST(Building, RefusedAttributesCostNoMoreThanOthers) {
    std::string content("(object Class \"A\"\n");
    for (int number = 0; number < 100'000; ++number) {
        content += "(object ClassAttribute \"x\"\n";
    }
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(importLogicalView(content).failure, "");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

} // namespace
