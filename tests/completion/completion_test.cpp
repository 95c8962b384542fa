// What the steps after the scan leave that an outline does not show.

#include "completion/ValidateModel.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"
#include "support/ImportedModel.h"

#include <gtest/gtest.h>

#include <ctime>

namespace {

TEST(Validation, SearchesTheNamesOfCopiesOnce) {
    constexpr int names = 20'000;
    constexpr int keys = 5'000;
    const std::clock_t start = std::clock();
    KelClass owner;
    const auto addAttribute = [&](const std::string& name) {
        auto* attribute = new KelAttribute;
        attribute->setName(KelString(name));
        owner.addAttribute(attribute);
        return attribute;
    };
    KelAttribute& shared = *addAttribute("k");
    for (int number = 1; number <= names; ++number) {
        addAttribute("k/" + std::to_string(number));
    }
    for (int number = 0; number < keys; ++number) {
        auto* key = new KelForeignKey;
        owner.addKey(key);
        key->addAttribute(&shared);
    }
    const std::clock_t built = std::clock();
    rose::ValidateAttributes(&owner);
    const std::clock_t validated = std::clock();
    EXPECT_LT(validated - built, 50 * (built - start)) << "a search for each copy takes 500 times as long";
    EXPECT_EQ(owner.getAttributeCount(), 1 + names + keys - 1);
}

TEST(Validation, ReportsACopyThatTheClassRefuses) {
    // The number after the largest overflows, and the name that it gives is taken.
    const ImportedModel imported = importLogicalView(R"(
(object Class "C")
object ClassAttribute "k"
object ClassAttribute "k/2147483647"
object ClassAttribute "k/-2147483648"
(object Class "P")
 (object Association "a")
  (object Role "" supplier "C")
  (object Role "" supplier "P" keys (list (object ClassAttribute "k")
 (object Association "b")
  (object Role "" supplier "C")
  (object Role "" supplier "P" keys (list (object ClassAttribute "k")
)");
    EXPECT_EQ(imported.failure, "");
    EXPECT_EQ(imported.log.count("QEV_RRSE_W0019"), 1);
    EXPECT_NE(imported.tree().find("foreign key -> k of P"), std::string::npos) << imported.tree();
}

TEST(Validation, MakesAKeyForAnAggregationAsAUserWould) {
    const ImportedModel imported = importLogicalView(R"(
(object Class "Part")
(object Class "Whole")
(object Class "Third")
object ClassAttribute "k"
 (object Association "a")
  (object Role "" supplier "Part")
  (object Role "" supplier "Whole" keys (list (object ClassAttribute "k")
  (object Role "" supplier "Third" is_aggregate TRUE
)");
    const std::string json = imported.json();
    const std::size_t last = json.rfind(R"("kind": "candidate")"); // of the third class
    EXPECT_NE(json.find(R"("userDefined": true)", last), std::string::npos) << json;
}

TEST(Validation, LooksForTheClassOfEachRoleUntilOneHasNone) {
    const ImportedModel imported = importLogicalView(R"(
(object Class "A")
 (object Association "a")
  (object Role "r" supplier "A")
  (object Role "s" supplier "B")
  (object Role "t"
  (object Role "u" supplier "A"
)");
    EXPECT_EQ(imported.log.count("QEV_RRSE_D0012 Class name to be found is A"), 1); // the third role ends it
    EXPECT_EQ(imported.log.count("QEV_RRSE_D0012 Class name to be found is B"), 1);
}

TEST(Cleanup, LeavesNothingForTheNextImport) {
    // An association that is never read, a note that is never attached, classes of one name; at last, a failure.
    std::string content = "(object Class \"A\")\n(object ClassDiagram \"D\")\n(object AssociationViewNew \"v\" @1\n"
                          " quidu \"1\"\n supplier \"W\"\n supplier \"W\"\n"
                          " NoteView @25\n Parent_View @25\n label \"t\"\n(object AssociationViewNew \"w\" @2\n";
    constexpr std::string_view sameNumbers = R"(
(object Class "A")
 (object Association "a") quid "1"
(object ClassDiagram "D")
(object ClassView "Class" "Logical View::A" @17
(object AttachView "" @9
   client @25
   supplier @17
)";
    const ImportedModel alone = importLogicalView(sameNumbers);
    EXPECT_NE(alone.tree().find("class A\n      note: \n"), std::string::npos) << alone.tree();
    for (const char* failure : {"", "[QEV_RRSE_F0009] Diagram not yet created"}) {
        EXPECT_EQ(importLogicalView(content).failure, failure);
        EXPECT_EQ(importLogicalView(sameNumbers).json(), alone.json());
        content += "(object Class_Category \"P\"\n(object Class \"B\")\n supplier @0\n";
    }
}

} // namespace
