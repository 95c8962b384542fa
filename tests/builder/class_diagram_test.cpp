#include "builder/BuilderSession.h"
#include "builder/ClassDiagrams.h"
#include "builder/Classes.h"
#include "builder/Packages.h"
#include "builder/Relationships.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDesignPackage.h"
#include "support/LogicalView.h"

namespace rose {

namespace {

constexpr LogicalViewRow views[] = {
    {"a class shown first and defined later is one class, of the category of its definition", R"(
(object ClassDiagram "D"
    (object ClassView "Class" "Logical View::Sales::Order" @1
(object Class_Category "Sales"
    (object Parameterized_Class "Order"
)",
     R"(
package Logical View
  package Sales
    parameterized class Order
  diagram D
    shows parameterized class Order
)"},
    {"a class that is defined nowhere gets a package of its own", R"(
(object ClassDiagram "D"
    (object ClassView "Class" "Use Case View::Visitor" @1
    (object ClassView "Class" "Logical View::Sales::Order" @2
)",
     R"(
package Logical View
  diagram D
    shows class Use Case View::Visitor
    shows class Order
package Use Case Classes in Class Diagrams
  class Order
  class Use Case View::Visitor
)"},
    {"drawn twice, shown once; drawn on two diagrams, shown on both", R"(
(object Class "A"
(object Class "B"
(object ClassDiagram "D"
    (object ClassView "Class" "Logical View::B" @1
    (object ClassView "Class" "Logical View::A" @2
    (object ClassView "Class" "Logical View::B" @3
(object ClassDiagram "E"
    (object ClassView "Class" "Logical View::A" @4
)",
     R"(
package Logical View
  class A
  class B
  diagram D
    shows class B
    shows class A
  diagram E
    shows class A
)"},
    {"outside of any diagram a view makes no class", R"(
    (object ClassView "Class" "Logical View::A" @1
)",
     R"(
package Logical View
)"},
};

TEST(ClassDiagramTest, ShowsTheClassesOfItsViews) {
    expectPackages(views);
}

class ClassDiagramSession : public BuilderSession {};

TEST_F(ClassDiagramSession, ANewDiagramEndsWhatWasReadBefore) {
    call(CreateClass, "A", KelClassCategoryType::classObject);
    for (void (*create)() : {CreateGeneralization, CreateRealization, CreateDependency}) {
        create();
        InNoteView = true;
        call(CreateClassDiagram, "D");
        EXPECT_EQ(aGeneral, nullptr);
        EXPECT_EQ(aRealization, nullptr);
        EXPECT_EQ(aDependency, nullptr);
        EXPECT_EQ(aAssociation, nullptr);
        EXPECT_FALSE(InNoteView);
        EXPECT_EQ(activeObject, aDiagram);
        EXPECT_EQ(aDiagram->getName(), "D");
    }
    EXPECT_EQ(log.lines.back(), "QEV_RRSE_S0014 Creating Class Diagram D...");
}

TEST_F(ClassDiagramSession, AViewGivesItsClassTheNumberAndMakesItCurrent) {
    call(CreateClassDiagram, "D");
    call(CreateClass, "A", KelClassCategoryType::classObject);
    const KelClass* defined = aClass;
    struct Row {
        long number;
        int kept;
    };
    constexpr Row rows[] = {{7, 7}, {-3, -3}, {0, 0}, {4294967298L, 2}};
    for (const Row& row : rows) {
        InNoteView = true;
        aClass = nullptr;
        call(AddToDiagram, "Logical View::A", row.number);
        EXPECT_EQ(aClass, defined);
        EXPECT_EQ(activeObject, defined);
        EXPECT_FALSE(InNoteView);
        EXPECT_EQ(defined->toolId, row.kept) << row.number;
    }
    // A class that waits keeps waiting when it is shown once more.
    call(AddToDiagram, "Unknown", 8L);
    const KelClass* waiting = aClass;
    call(AddToDiagram, "Logical View::Unknown", 9L);
    EXPECT_EQ(aClass, waiting);
    EXPECT_EQ(toBeClasses.getCount(), 1);
    EXPECT_EQ(aDiagram->modelElements().count(), 2);
}

TEST_F(ClassDiagramSession, WithoutADiagramAViewChangesNothing) {
    call(CreateClass, "A", KelClassCategoryType::classObject);
    const KelClass* before = aClass;
    activeObject = aPackage;
    InNoteView = true;
    call(AddToDiagram, "B", 5L);
    EXPECT_EQ(aClass, before);
    EXPECT_EQ(activeObject, aPackage);
    EXPECT_TRUE(InNoteView);
    EXPECT_EQ(toBeClasses.getCount(), 0);
}

} // namespace

} // namespace rose
