#include "builder/Associations.h"
#include "builder/BuilderSession.h"
#include "builder/ClassDiagrams.h"
#include "builder/ClassLookup.h"
#include "builder/Classes.h"
#include "builder/Enumerations.h"
#include "builder/Packages.h"
#include "builder/indexes/Containers.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDesignPackage.h"

#include <cstring>

namespace rose {

namespace {

TEST(ClassNameTest, OnlyBelowTheLogicalViewANameIsCutToItsLastPart) {
    struct Row {
        const char* text;
        const char* simpleName;
    };
    constexpr Row rows[] = {
        {"Order", "Order"},
        {"A::B", "A::B"},
        {"Logical View", "Logical View"},
        {"Logical View:B", "Logical View:B"},
        {"logical view::B", "logical view::B"},
        {"Logical View::B", "B"},
        {"Logical View::A::B", "B"},
        {"x Logical View::B", "B"},
        {"A::Logical View::B", "B"},
        {"Logical View::", ""},
        {"Logical View::A::", ""},
        {"Logical View:::", ""},
        {"Logical View::B:", "B:"},
        {"", ""},
    };
    for (const Row& row : rows) {
        const char* simpleName = stripDoubleColon(row.text);
        EXPECT_STREQ(simpleName, row.simpleName) << row.text;
        EXPECT_EQ(simpleName + std::strlen(simpleName), row.text + std::strlen(row.text)) << "a copy";
    }
}

class ClassLookupSession : public BuilderSession {};

TEST_F(ClassLookupSession, AnElementOfAnotherKindIsPassedOver) {
    call(CreatePackage, "P0");
    call(CreateAssociation, "Order");
    KelDesignPackage* const first = aPackage;
    ClosePackage();
    call(CreatePackage, "P1");
    call(CreateClassDiagram, "D");
    draw(*aDiagram, *first->modelElements()[0]);
    EXPECT_EQ(findAClass("Order", 0), nullptr);
    EXPECT_EQ(getClassFromViewelement(aDiagram, "Order"), nullptr);

    call(CreateClass, "Order", KelClassCategoryType::classObject);
    call(AddToDiagram, "Order", 1L);
    EXPECT_EQ(findAClass("Order", 0), aClass);
    EXPECT_EQ(findAClass("Order", 1), aClass) << "what is in a package stays there";
    EXPECT_EQ(aClass->getDesignPackage(), aPackage);
    EXPECT_EQ(getClassFromViewelement(aDiagram, "Order"), aClass);
    EXPECT_EQ(getClassFromViewelement(aPackage, "Order"), aClass);
    EXPECT_EQ(getClassFromViewelement(first, "Order"), nullptr);
}

TEST_F(ClassLookupSession, OnlyRemovalEndsTheWait) {
    const KelClass* const waiting = createWaitingClass("A");
    EXPECT_EQ(findAClass("A", 0), waiting);
    EXPECT_EQ(findAClass("A", 0), waiting);
    EXPECT_EQ(findAClass("a", 0), nullptr);
    EXPECT_EQ(toBeClasses.getCount(), 1);
    EXPECT_EQ(findAClass("A", 1), waiting);
    EXPECT_EQ(findAClass("A", 1), nullptr);
    EXPECT_EQ(toBeClasses.getCount(), 0);
    delete waiting;
}

TEST_F(ClassLookupSession, ADefinedClassWinsOverAWaitingOne) {
    call(CreateClass, "A", KelClassCategoryType::classObject);
    const KelClass* const waiting = createWaitingClass("A");
    EXPECT_EQ(findAClass("A", 1), aClass);
    delete aClass;
    EXPECT_EQ(aClass, nullptr);
    EXPECT_EQ(findAClass("A", 0), waiting);
}

TEST_F(ClassLookupSession, LooksIntoWhatAContainerHoldsNow) {
    call(CreateClassDiagram, "D");
    for (const char* name : {"A", "B", "C"}) {
        call(CreateClass, name, KelClassCategoryType::classObject);
        call(AddToDiagram, name, 1L);
        EXPECT_EQ(getClassFromViewelement(aDiagram, name), aClass) << name;
        EXPECT_EQ(getClassFromViewelement(aPackage, name), aClass) << name;
        EXPECT_EQ(getClassFromViewelement(aDiagram, "D"), nullptr);
    }
    delete aClass;
    EXPECT_EQ(getClassFromViewelement(aDiagram, "C"), nullptr);
    EXPECT_EQ(getClassFromViewelement(aPackage, "C"), nullptr);
    const KelClass* const outside = createWaitingClass("Z");
    EXPECT_EQ(getClassFromViewelement(aDiagram, "Z"), nullptr) << outside;
    call(CreateClassDiagram, "E");
    EXPECT_EQ(getClassFromViewelement(aDiagram, "A"), nullptr);
}

} // namespace

} // namespace rose
