// Classes, their attributes and operations, and the views that show them.

#include "support/LogicalView.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

constexpr LogicalViewRow classes[] = {
    {"the kinds of classes, of which two take template arguments", R"(
(object Class "A"
    (object Parameter "of nothing"
(object Parameterized_Class "B"
    (object Parameter "T"
(object Instantiated_Class "C"
    (object Parameter "of nothing"
(object Class_Utility "D"
    (object Parameter "of nothing"
(object Parameterized_Class_Utility "E"
    (object Parameter "T"
    (object Parameter "T"
(object Instantiated_Class_Utility "F"
    (object Parameter "of nothing"
(object Metaclass "G"
    (object Parameter "of nothing"
)",
     R"(
package Logical View
  class A
  parameterized class B
    template argument T: int
  instantiated class C
  class utility D
  parameterized class utility E
    template argument T: int
    template argument T: int
  instantiated class utility F
  metaclass G
)"},
    {"names are told apart byte by byte, below the logical view by their last part; the first definition counts", R"(
(object Class_Category "First"
    (object Class "Logical View::First::A"
        (object ClassAttribute "one"
 logical_presentations (list
(object Class_Category "Second"
    (object Metaclass "Logical View::Second::A"
        (object ClassAttribute "two"
    (object Class "a"
    (object Class "Other::A"
    (object Class ""
)",
     R"(
package Logical View
  package First
    class A
      - one: int
      - two: int
  package Second
    class a
    class Other::A
    class 
)"},
    {"a stereotype makes an interface in one spelling only; an empty one is none, a later one replaces the first", R"(
(object Class "A"
 stereotype "Interface"
(object Class "B"
 stereotype "one"
 stereotype "interface"
(object Class "C"
 stereotype "Interface "
 stereotype ""
(object Class_Category "P"
 stereotype "Interface"
(object Class "A"
)",
     R"(
package Logical View
  package P <<Interface>>
  interface A <<Interface>>
  class B <<interface>>
  class C <<Interface >>
)"},
    {"attributes and operations before any class belong to nothing, nor does what follows them", R"(
    (object ClassAttribute "x"
        type "char"
        initv "2"
        exportControl "Public"
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
    {"a second attribute of a name is refused, of operations all are kept", R"(
(object Class "A"
    (object ClassAttribute "x"
        type "Logical View::Money"
        exportControl "Public"
        initv "1"
    (object ClassAttribute "x"
        type "char"
        initv "2"
        exportControl "Protected"
    (object ClassAttribute "y"
        initv "3"
    (object Operation "f"
    (object Operation "f"
)",
     R"(
package Logical View
  class A
    + x: Money = 1
    - y: int = 3
    + f(): int
    + f(): int
)"},
    {"an enumeration leaves everything, and its rest is read for nothing", R"(
(object ClassDiagram "D"
    (object ClassView "Class" "Logical View::Colour" @1
    (object ClassView "Class" "Waiting" @2
    (value Text "{A,B}"
(object Class "Colour"
    (object ClassAttribute "lost"
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
  diagram D
)"},
};

TEST(Classes, HaveAttributesAndOperations) {
    expectPackages(classes);
}

constexpr LogicalViewRow views[] = {
    {"a class is what its definition makes it, wherever that stands, and one that has none gets a package of its own",
     R"(
    (object ClassView "Class" "Logical View::OutsideOfAnyDiagram" @1
(object ClassDiagram "D"
    (object ClassView "Class" "Logical View::Sales::Order" @1
    (object ClassView "Class" "Use Case View::Visitor" @2
    (object ClassView "Class" "Logical View::Sales::Cart" @3
(object Class_Category "Sales"
    (object Parameterized_Class "Order"
)",
     R"(
package Logical View
  package Sales
    parameterized class Order
  diagram D
    shows parameterized class Order
    shows class Use Case View::Visitor
    shows class Cart
package Use Case Classes in Class Diagrams
  class Cart
  class Use Case View::Visitor
)"},
};

TEST(ClassViews, ShowClasses) {
    expectPackages(views);
}

TEST(Classes, AreLoggedUnderTheNamesOfTheFile) {
    const ImportedModel imported = importLogicalView(R"(
(object Class "Logical View::A"
    (object ClassAttribute "x"
        type "Logical View::T"
    (object ClassAttribute "x"
    (object Operation "f"
        result "U"
(object ClassDiagram "D"
)");
    const std::vector<std::string> lines(imported.log.lines.begin(), imported.log.lines.begin() + 6);
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "QEV_RRSE_S0013 Creating Package Logical View...",
                         "QEV_RRSE_D0016 Creating class Logical View::A...",
                         "QEV_RRSE_D0017 Creating attribute x...",
                         "QEV_RRSE_D0018 Connecting Type Logical View::T...",
                         "QEV_RRSE_D0017 Creating attribute x...",
                         "QEV_RRSE_S0014 Creating Class Diagram D...",
                     }));
}

// What belongs to nothing is deleted at the end, one object after the other; a walk to each would take minutes.
TEST(Classes, RefusedAttributesCostNoMoreThanOthers) {
    std::string content("(object Class \"A\"\n");
    for (int number = 0; number < 100'000; ++number) {
        content += "(object ClassAttribute \"x\"\n";
    }
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(packagesOf(importLogicalView(content)), "\npackage Logical View\n  class A\n    - x: int\n");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

} // namespace
