#include "builder/Arguments.h"
#include "builder/BuilderSession.h"
#include "builder/Classes.h"
#include "builder/Operations.h"
#include "host/model/KelArgument.h"
#include "host/model/KelClass.h"
#include "host/model/KelOperation.h"
#include "support/LogicalView.h"

namespace rose {

namespace {

constexpr LogicalViewRow operations[] = {
    {"arguments belong to the last operation, template arguments come before the first", R"(
(object Parameterized_Class "A"
    (object Parameter "T"
        type "class"
    (object Parameter "size"
        initv "10"
    (object Operation "f"
        (object Parameter "x"
            type "char"
        (object Parameter "y"
            initv "1"
        result "long"
    (object Operation "g"
        (object Parameter "z"
            type "char"
)",
     R"(
package Logical View
  parameterized class A
    template argument T: class
    template argument size: int = 10
    + f(x: char, y: int = 1): long
    + g(z: char): int
)"},
    {"a class that takes none: arguments before the first operation belong to nothing", R"(
(object Class "A"
    (object Operation "f"
(object Class "B"
    (object Parameter "lost"
        type "char"
        initv "1"
    (object Operation "g"
        (object Parameter "x"
            type "char"
)",
     R"(
package Logical View
  class A
    + f(): int
  class B
    + g(x: char): int
)"},
    {"operations of a name are all kept", R"(
(object Class "A"
    (object Operation "f"
    (object Operation "f"
)",
     R"(
package Logical View
  class A
    + f(): int
    + f(): int
)"},
    {"without a class it belongs to nothing, nor do its arguments", R"(
    (object Operation "f"
        (object Parameter "x"
            type "char"
        concurrency "Guarded"
        result "long"
(object Class "A"
)",
     R"(
package Logical View
  class A
)"},
};

TEST(OperationTest, OutlineOfClasses) {
    expectPackages(operations);
}

class OperationSession : public BuilderSession {};

TEST_F(OperationSession, ConcurrencyHasItsCodes) {
    struct Row {
        const char* text;
        int onOperation;
        int onClass;
    };
    constexpr Row rows[] = {
        {"Sequential", 0, 3},  {"Seqtial", 3, 0}, {"Guarded", 1, 1},  {"Active", 3, 3},
        {"Synchronous", 3, 3}, {"guarded", 3, 3}, {"Guarded ", 3, 3}, {"", 3, 3},
    };
    call(CreateClass, "A", KelClassCategoryType::classObject);
    for (const Row& row : rows) {
        keepOperation = nullptr;
        call(Concurrency, row.text);
        EXPECT_EQ(aClass->concurrency, row.onClass) << row.text;
        const int ofClass = std::exchange(aClass->concurrency, 9);
        call(CreateOperation, "f");
        call(Concurrency, row.text);
        EXPECT_EQ(aOperation->concurrency, row.onOperation) << row.text;
        EXPECT_EQ(aClass->concurrency, 9);
        aClass->concurrency = ofClass;
    }
    aOperation->concurrency = 9;
    Concurrency(nullptr);
    EXPECT_EQ(aOperation->concurrency, 9);
    keepOperation = nullptr;
    aClass = nullptr;
    call(Concurrency, "Guarded"); // has nowhere to go
    EXPECT_EQ(aOperation->concurrency, 9);
}

TEST_F(OperationSession, ArgumentsHaveTheirPlaceInTheirOwner) {
    using enum KelClassCategoryType;
    struct Row {
        KelClassCategoryType category;
        bool takesArguments;
    };
    constexpr Row rows[] = {
        {classObject, false},
        {parameterizedClass, true},
        {instantiatedClass, false},
        {classUtility, false},
        {parameterizedClassUtility, true},
        {instantiatedClassUtility, false},
        {metaclass, false},
        {KelClassCategoryType::interface, false},
    };
    for (const Row& row : rows) {
        call(CreateClass, std::to_string(static_cast<int>(row.category)), row.category);
        for (int position = 0; position < 3; ++position) {
            InNoteView = true;
            call(CreateArgument, "same name");
            EXPECT_EQ(aArgument->getParent(), row.takesArguments ? aClass : nullptr) << aClass->getName().text();
            EXPECT_EQ(aArgument->position, row.takesArguments ? position : 0) << aClass->getName().text();
            EXPECT_EQ(activeObject, aArgument);
            EXPECT_FALSE(InNoteView);
        }
        call(CreateOperation, "f");
        for (int position = 0; position < 3; ++position) {
            call(CreateArgument, "Logical View::$UNNAMED$");
            EXPECT_EQ(aArgument->getParent(), aOperation);
            EXPECT_EQ(aArgument->position, position);
            EXPECT_EQ(aArgument->getName(), "Logical View::$UNNAMED$");
        }
    }
}

TEST_F(OperationSession, ANewOperationIsCurrent) {
    call(CreateClass, "A", KelClassCategoryType::classObject);
    InNoteView = true;
    call(CreateOperation, "f");
    EXPECT_EQ(aOperation, aClass->operations()[0]);
    EXPECT_EQ(keepOperation, aOperation);
    EXPECT_EQ(activeObject, aOperation);
    EXPECT_FALSE(InNoteView);
    delete aClass;
    EXPECT_EQ(aOperation, nullptr);
    EXPECT_EQ(keepOperation, nullptr);
    EXPECT_EQ(activeObject, nullptr);
}

} // namespace

} // namespace rose
