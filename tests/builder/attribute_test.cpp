#include "builder/Arguments.h"
#include "builder/Attributes.h"
#include "builder/BuilderSession.h"
#include "builder/Classes.h"
#include "builder/Types.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "support/LogicalView.h"

#include <chrono>

namespace rose {

namespace {

constexpr LogicalViewRow attributes[] = {
    {"private unless said otherwise, typed int unless said otherwise", R"(
(object Class "A"
    (object ClassAttribute "x"
        type "Logical View::Money"
        exportControl "Public"
    (object ClassAttribute "y"
        initv "3"
)",
     R"(
package Logical View
  class A
    + x: Money
    - y: int = 3
)"},
    {"a second one of a name is refused, and what follows is its own", R"(
(object Class "A"
    (object ClassAttribute "x"
        type "long"
        initv "1"
    (object ClassAttribute "x"
        type "char"
        initv "2"
        exportControl "Public"
    (object ClassAttribute "y"
        type "long"
)",
     R"(
package Logical View
  class A
    - x: long = 1
    - y: long
)"},
    {"without a class it belongs to nothing", R"(
    (object ClassAttribute "x"
        type "char"
        initv "2"
        exportControl "Public"
(object Class "A"
)",
     R"(
package Logical View
  class A
)"},
    {"a qualifier's value is that of its copy at the other end, too", R"(
(object Class "A"
(object Class "B"
    (object Association "ab"
        (object Role "a"
            supplier "Logical View::A"
        (object Role "b"
            supplier "Logical View::B"
            keys
                (object ClassAttribute "x"
                    type "char"
                    initv "7"
(object Class "C"
    (object ClassAttribute "y"
        type "long"
        initv "8"
)",
     R"(
package Logical View
  class A
    - x: char = 7
    foreign key: x -> x of B
  class B
    - x: char = 7
    primary key x: x
  association ab: A, B
    role a: A (source, foreign key x)
    role b: B
  class C
    - y: long = 8
)"},
};

TEST(AttributeTest, OutlineOfClasses) {
    expectPackages(attributes);
}

class AttributeSession : public BuilderSession {
protected:
    void SetUp() override { call(CreateClass, "A", KelClassCategoryType::classObject); }
};

TEST_F(AttributeSession, PositionsCountTheAttributesOfTheClass) {
    struct Row {
        const char* name;
        int position;
        bool accepted;
    };
    constexpr Row rows[] = {
        {"b", 0, true}, {"a", 1, true}, {"b", 1, false}, {"", 2, true}, {"a", 2, false}, {"B", 3, true},
    };
    for (const Row& row : rows) {
        InNoteView = true;
        shadowAttribute = aAttribute;
        call(CreateAttribute, row.name);
        EXPECT_EQ(aAttribute->getName(), row.name);
        EXPECT_EQ(aAttribute->position, row.position) << row.name;
        EXPECT_EQ(aAttribute->getParent() == aClass, row.accepted) << row.name;
        EXPECT_EQ(aAttribute->visibility, 2);
        EXPECT_EQ(activeObject, aAttribute);
        EXPECT_EQ(shadowAttribute, nullptr);
        EXPECT_FALSE(InNoteView);
    }
    EXPECT_EQ(log.count("QEV_RRSE_D0017"), 6) << "a refusal says nothing of its own";
    EXPECT_EQ(log.lines.size(), 1U + 1U + 6U);
}

TEST_F(AttributeSession, AnInitialValueIsForAttributesAndArguments) {
    call(CreateArgument, "argument");
    call(CreateAttribute, "attribute");
    struct Row {
        KelModelObject* active;
        const char* text;
        const char* attribute; // what each of them has then
        const char* argument;
    };
    const Row rows[] = {
        {aAttribute, "1", "1", ""}, {aArgument, "2", "1", "2"}, {aClass, "3", "1", "2"},
        {nullptr, "4", "1", "2"},   {aAttribute, "", "", "2"},
    };
    for (const Row& row : rows) {
        activeObject = row.active;
        call(SetInitialValue, row.text);
        EXPECT_EQ(aAttribute->initialValue, row.attribute) << row.text;
        EXPECT_EQ(aArgument->initialValue, row.argument) << row.text;
    }
    activeObject = aArgument;
    SetInitialValue(nullptr);
    EXPECT_EQ(aArgument->initialValue, "");
}

// What belongs to nothing is deleted at the end, one object after the other; a walk to each would take minutes.
TEST(AttributeTest, RefusedAttributesCostNoMoreThanOthers) {
    std::string content("(object Class \"A\"\n");
    for (int number = 0; number < 100'000; ++number) {
        content += "(object ClassAttribute \"x\"\n";
    }
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(packagesOf(importLogicalView(content)), "\npackage Logical View\n  class A\n    - x: int\n");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

} // namespace

} // namespace rose
