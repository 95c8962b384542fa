#include "builder/Attributes.h"
#include "builder/BuilderSession.h"
#include "builder/ClassDiagrams.h"
#include "builder/ClassLookup.h"
#include "builder/Classes.h"
#include "builder/Enumerations.h"
#include "builder/Types.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelTypeValue.h"
#include "support/LogicalView.h"

namespace rose {

namespace {

class EnumerationSession : public BuilderSession {
protected:
    void SetUp() override { call(CreateClass, "Colour", KelClassCategoryType::classObject); }

    /// The values of the model's only type, each as "name:value@position ".
    [[nodiscard]] std::string values() const {
        if (model.types().isEmpty()) {
            return "no type";
        }
        std::string all;
        const auto* type = static_cast<const KelDerivedType*>(model.types()[0]);
        for (const KelTypeValue* value : type->typeValues()) {
            all += std::string(value->getName().view()) + ":" + std::string(value->getValue().view()) + "@" +
                   std::to_string(value->position) + " ";
        }
        return all;
    }
};

struct Enumerating {
    const char* text;
    const char* values;
};

constexpr Enumerating enumerations[] = {
    {"{Red,Green=2,Blue}", "Red:Red@0 Green:2@1 Blue:Blue@2 "},
    {"{A=1,B=2}", "A:1@0 B:2@1 "},
    {"enum Colour { Red , Blue } ;", " Red : Red @0  Blue : Blue @1 "},
    {"{A,B", "A:A@0 B:B@1 "},
    {"{A,B},C}", "A:A@0 B}:B}@1 C:C@2 "},
    {"{A}B,C}D}", "A}B:A}B@0 C:C@1 "},
    {"{A=1=2,B==}", "A:1=2@0 B:=@1 "},
    {"{A=,B}", "A:A@0 B:B@1 "},
    {"{,B,}", ":@0 B:B@1 :@2 "},
    {"{=1,B}", ":1@0 B:B@1 "},
    {"{A,A}", "A:A@0 A:A@1 "},
    {"{{A,B}", "{A:{A@0 B:B@1 "},
    // Nothing to import, and the class stays.
    {"", "no type"},
    {"Red,Green", "no type"},
    {"{Only}", "no type"},
    {"{}", "no type"},
    {"a,{b,c}", "no type"},
};

TEST_F(EnumerationSession, LiteralsBecomeTheValuesOfAType) {
    for (const Enumerating& row : enumerations) {
        call(CreateEnumType, row.text);
        EXPECT_EQ(values(), row.values) << row.text;
        const bool imported = !model.types().isEmpty();
        EXPECT_EQ(aClass == nullptr, imported) << row.text;
        EXPECT_EQ(activeObject, aClass) << row.text;
        EXPECT_EQ(findAClass("Colour", 0) == nullptr, imported) << row.text;
        if (imported) {
            EXPECT_EQ(model.types()[0]->getName(), "Colour");
            EXPECT_TRUE(model.types()[0]->getUserDefined());
            delete model.types()[0];
            call(CreateClass, "Colour", KelClassCategoryType::classObject);
        }
    }
}

TEST_F(EnumerationSession, TheClassLeavesEverything) {
    call(CreateClassDiagram, "D");
    call(AddToDiagram, "Colour", 1L);
    call(CreateAttribute, "lost with it");
    call(CreateEnumType, "{A,B}");
    EXPECT_EQ(aDiagram->modelElements().count(), 0);
    EXPECT_EQ(aPackage->modelElements().count(), 0);
    EXPECT_EQ(aAttribute, nullptr);
    call(CreateAttribute, "x");
    EXPECT_EQ(aAttribute->getParent(), nullptr);

    call(AddToDiagram, "Waiting", 2L);
    EXPECT_EQ(toBeClasses.getCount(), 1);
    call(CreateEnumType, "{A,B}");
    EXPECT_EQ(toBeClasses.getCount(), 0);
    EXPECT_EQ(aDiagram->modelElements().count(), 0);
    EXPECT_EQ(model.types().count(), 2);

    call(CreateEnumType, "{C,D}"); // there is no class
    EXPECT_EQ(model.types().count(), 2);
}

TEST_F(EnumerationSession, ATypeOfTheNameIsEnumeratedItself) {
    call(CreateAttribute, "x");
    call(ConnectType, "Logical View::Colour");
    const KelType* const declared = aBaseType;
    call(CreateClass, "Colour", KelClassCategoryType::classObject);
    call(CreateEnumType, "{A,B}");
    EXPECT_EQ(model.types().count(), 1);
    EXPECT_EQ(model.types()[0], declared);
    EXPECT_EQ(values(), "A:A@0 B:B@1 ");
    call(CreateClass, "Colour", KelClassCategoryType::classObject);
    call(CreateEnumType, "{C,D}");
    EXPECT_EQ(values(), "A:A@0 B:B@1 C:C@2 D:D@3 ");
}

constexpr LogicalViewRow classes[] = {
    {"the rest of an enumeration is read for nothing", R"(
(object Class "Colour"
    (value Text "{Red,Blue}"
    (object ClassAttribute "lost"
        type "char"
    (object Operation "lost"
        (object Parameter "lost"
    (value Text "{Red,Blue}"
    abstract TRUE
    (object Inheritance_Relationship
        supplier "Logical View::A"
(object Class "A"
    (object ClassAttribute "x"
        type "Colour"
)",
     R"(
package Logical View
  class A
    - x: Colour
)"},
};

TEST(EnumerationTest, OutlineOfClasses) {
    expectPackages(classes);
}

} // namespace

} // namespace rose
