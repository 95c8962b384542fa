#include "builder/Classes.h"

#include "builder/Associations.h"
#include "builder/Diagrams.h"
#include "builder/indexes/ContainerIndex.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelClass.h"
#include "support/MidImport.h"

#include <gtest/gtest.h>

#include <cstring>

namespace rose {

namespace {

TEST(ClassLookup, CutsNamesBelowTheLogicalViewToTheirLastPart) {
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
        {"Logical View::A::B", "B"},
        {"x Logical View::B", "B"},
        {"A::Logical View::B", "B"},
        {"Logical View::", ""},
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

TEST(ClassLookup, FindsClassesInPackagesAndElseWaitingOnesUntilTheyAreRemoved) {
    MidImport building(1);
    state.aPackage = building.designPackages.front();
    char name[] = "Order";
    CreateAssociation(name);
    EXPECT_EQ(findAClass(name, 0), nullptr) << "an element of another kind";
    KelClass* const waiting = createWaitingClass(name);
    state.aPackage = building.designPackages.back();
    CreateClass(name, KelClassCategoryType::metaclass);
    EXPECT_EQ(state.aClass, waiting);
    EXPECT_EQ(state.toBeClasses.getCount(), 0);
    const KelClass* const another = createWaitingClass(name);
    EXPECT_EQ(findAClass(name, 1), waiting) << "what is in a package comes first and stays there";
    EXPECT_EQ(waiting->getDesignPackage(), state.aPackage);
    delete waiting;
    EXPECT_EQ(state.aClass, nullptr);
    EXPECT_EQ(findAClass("order", 0), nullptr);
    EXPECT_EQ(findAClass(name, 0), another);
    const KelClass* const namesake = createWaitingClass(name);
    EXPECT_EQ(findAClass(name, 1), another);
    EXPECT_EQ(findAClass(name, 1), namesake);
    EXPECT_EQ(findAClass(name, 1), nullptr);
    delete another;
    delete namesake;
}

} // namespace

} // namespace rose
