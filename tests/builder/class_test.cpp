#include "builder/Attributes.h"
#include "builder/BuilderSession.h"
#include "builder/Classes.h"
#include "builder/Operations.h"
#include "builder/Packages.h"
#include "builder/Relationships.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelRealization.h"
#include "support/LogicalView.h"

namespace rose {

namespace {

constexpr LogicalViewRow definitions[] = {
    {"the kinds of classes", R"(
(object Class "A"
(object Parameterized_Class "B"
(object Instantiated_Class "C"
(object Class_Utility "D"
(object Parameterized_Class_Utility "E"
(object Instantiated_Class_Utility "F"
(object Metaclass "G"
)",
     R"(
package Logical View
  class A
  parameterized class B
  instantiated class C
  class utility D
  parameterized class utility E
  instantiated class utility F
  metaclass G
)"},
    {"defined twice under a simple name: one class, of the first kind, where it was first", R"(
(object Class_Category "First"
    (object Class "Logical View::First::A"
        (object ClassAttribute "one"
 logical_presentations (list
(object Class_Category "Second"
    (object Metaclass "Logical View::Second::A"
        (object ClassAttribute "two"
)",
     R"(
package Logical View
  package First
    class A
      - one: int
      - two: int
  package Second
)"},
    {"names are told apart byte by byte, and only below the logical view by their last part", R"(
(object Class "A"
(object Class "a"
(object Class "Other::A"
(object Class ""
)",
     R"(
package Logical View
  class A
  class a
  class Other::A
  class 
)"},
    {"a stereotype makes an interface in one spelling only", R"(
(object Class "A"
 stereotype "Interface"
(object Class "B"
 stereotype "interface"
(object Class "C"
 stereotype "Interface "
(object Class_Category "P"
 stereotype "Interface"
)",
     R"(
package Logical View
  package P <<Interface>>
  interface A <<Interface>>
  class B <<interface>>
  class C <<Interface >>
)"},
    {"an interface that is defined once more stays one", R"(
(object Class "A"
 stereotype "Interface"
(object Class "A"
)",
     R"(
package Logical View
  interface A <<Interface>>
)"},
    {"an empty stereotype is none, a later one replaces the first", R"(
(object Class "A"
 stereotype "one"
 stereotype ""
(object Class "B"
 stereotype "one"
 stereotype "two"
)",
     R"(
package Logical View
  class A <<one>>
  class B <<two>>
)"},
};

TEST(ClassTest, OutlineOfDefinitions) {
    expectPackages(definitions);
}

class ClassSession : public BuilderSession {
protected:
    void SetUp() override { call(CreateClass, "A", KelClassCategoryType::classObject); }
};

TEST_F(ClassSession, ADefinitionReportsTheWholeNameAndStartsAfresh) {
    call(CreateOperation, "f");
    InQualifier = true;
    attachNote = true;
    InNoteView = true;
    call(CreateClass, "Logical View::Sales::Order", KelClassCategoryType::metaclass);
    EXPECT_EQ(log.lines.back(), "QEV_RRSE_D0016 Creating class Logical View::Sales::Order...");
    EXPECT_EQ(aClass->getName(), "Order");
    EXPECT_EQ(aClass->categoryType, KelClassCategoryType::metaclass);
    EXPECT_EQ(activeObject, aClass);
    EXPECT_EQ(keepOperation, nullptr);
    EXPECT_EQ(aAssociation, nullptr);
    EXPECT_FALSE(InQualifier);
    EXPECT_FALSE(attachNote);
    EXPECT_FALSE(InNoteView);
}

TEST_F(ClassSession, AStereotypeEndsANoteUnlessThereIsNone) {
    call(CreateAttribute, "x");
    KelModelObject* const attribute = aAttribute;
    struct Row {
        KelModelObject* active;
        const char* text; // null: no value
        bool endsNote;
    };
    const Row rows[] = {
        {aClass, "s", true}, {aPackage, "s", true},    {attribute, "s", true}, // which keeps no stereotype
        {aClass, "", false}, {aClass, nullptr, false}, {nullptr, "s", false},
    };
    for (const Row& row : rows) {
        activeObject = row.active;
        InNoteView = true;
        std::string text(row.text != nullptr ? row.text : "");
        AddStereotypeToClass(row.text != nullptr ? text.data() : nullptr);
        EXPECT_EQ(InNoteView, !row.endsNote) << (&row - rows);
    }
    EXPECT_EQ(aClass->stereotype, "s");
    EXPECT_EQ(aPackage->stereotype, "s");
}

TEST_F(ClassSession, ALabelNamesGeneralizationsAndDependenciesOnly) {
    CreateGeneralization();
    KelModelObject* const generalization = aGeneral;
    CreateDependency();
    KelModelObject* const dependency = aDependency;
    CreateRealization();
    KelModelObject* const realization = aRealization;
    struct Row {
        KelModelObject* active;
        const char* label;
        const char* name;
    };
    const Row rows[] = {
        {generalization, "is a", "is a"},    {generalization, "", "is a"}, {generalization, "kind of", "kind of"},
        {dependency, "uses", "uses"},        {realization, "does", ""},    {aClass, "label", "A"},
        {aPackage, "label", "Logical View"},
    };
    for (const Row& row : rows) {
        activeObject = row.active;
        call(AddLabel, row.label);
        EXPECT_EQ(row.active->getName(), row.name) << row.label;
    }
    AddLabel(nullptr);
    activeObject = nullptr;
    call(AddLabel, "nothing to name");
}

} // namespace

} // namespace rose
