// Generalizations, realizations and dependencies, and the views that show them.

#include "support/LogicalView.h"

#include <gtest/gtest.h>

namespace {

constexpr LogicalViewRow relationships[] = {
    {"the class before a relationship is its client; the supplier may be defined later", R"(
(object Class "B")
(object Inheritance_Relationship
  supplier "Logical View::A")
(object Realize_Relationship
  supplier "Logical View::A")
(object Uses_Relationship
  label "uses" supplier "Logical View::A")
(object Class "A")
)",
     R"(
package Logical View
  class B
  generalization: B -> A
  realization: B -> A
  dependency uses: B -> A
  class A
)"},
    {"a supplier found by name goes to the last relationship made, a new one to that which is active", R"(
(object Class "A")
(object Class "B")
(object Inheritance_Relationship
(object Realize_Relationship
  supplier "A")
object ClassAttribute "takes nothing" supplier "A2" supplier "A"
(object Class "A2")
)",
     R"(
package Logical View
  class A
  class B
    - takes nothing: int
  realization: B -> A
  class A2
)"},
    {"a second supertype joins the first, a second specification takes its place", R"(
(object Class "A")
(object Class "C")
(object Class "B")
(object Inheritance_Relationship
  supplier "A" supplier "C")
(object Realize_Relationship
  supplier "A" supplier "C")
)",
     R"(
package Logical View
  class A
  class C
  class B
  generalization: B -> A, C
  realization: B -> C
)"},
    {"without a current class there is no client", R"(
(object Class "A")
(object Class "E") (value Text "{X,Y}")
(object Realize_Relationship
  supplier "A")
)",
     R"(
package Logical View
  class A
  realization: ? -> A
)"},
};

TEST(Relationships, AreBoundAtBothEnds) {
    expectPackages(relationships);
}

constexpr LogicalViewRow views[] = {
    {"each kind of view shows its own kind, and every one between the two classes", R"(
(object Class "A")
(object Class "B")
(object Inheritance_Relationship
  supplier "A")
(object Inheritance_Relationship
  supplier "A")
(object Realize_Relationship
  supplier "A")
(object Uses_Relationship
  supplier "A")
(object ClassDiagram "Inherit")
(object ClassView "Class" "Logical View::A" @1
(object ClassView "Class" "Logical View::B" @2
(object InheritView "" @3
  client @2
  supplier @1)
(object InheritView "" @3
  client @2
  supplier @1)
(object ClassDiagram "Realize")
(object ClassView "Class" "Logical View::A" @1
(object ClassView "Class" "Logical View::B" @2
(object RealizeView "" @3
  client @2
  supplier @1)
(object ClassDiagram "Uses")
(object ClassView "Class" "Logical View::A" @1
(object ClassView "Class" "Logical View::B" @2
(object UsesView "" @3
  client @2
  supplier @1)
(object UsesView "" @4
  client @1
  supplier @2)
)",
     R"(
package Logical View
  class A
  class B
  generalization: B -> A
  generalization: B -> A
  realization: B -> A
  dependency: B -> A
  diagram Inherit
    shows class A
    shows class B
    shows generalization: B -> A
    shows generalization: B -> A
  diagram Realize
    shows class A
    shows class B
    shows realization: B -> A
  diagram Uses
    shows class A
    shows class B
    shows dependency: B -> A
)"},
    {"a view shows nothing without a relationship, or without an element at each end", R"(
(object Class "A")
(object Class "B")
(object Inheritance_Relationship
  supplier "A")
(object Class "C")
(object InheritView "" @3
  client @2
  supplier @1)
(object ClassDiagram "D")
(object ClassView "Class" "Logical View::A" @1
(object ClassView "Class" "Logical View::B" @2
(object ClassView "Class" "Logical View::C" @4
(object InheritView "" @5
  client @1
  supplier @2)
(object InheritView "" @5
  client @4
  supplier @1)
(object InheritView "" @5
  client @2
  supplier @9)
(object InheritView "" @5
  client @9
  supplier @1)
(object InheritView "" @5
  client @2
  supplier @2)
)",
     R"(
package Logical View
  class A
  class B
  generalization: B -> A
  class C
  diagram D
    shows class A
    shows class B
    shows class C
)"},
    {"the last element of a number before the other end counts", R"(
(object Class "A")
(object Class "B")
(object Inheritance_Relationship
  supplier "A")
(object Class "C")
(object ClassDiagram "Last client")
(object ClassView "Class" "Logical View::C" @2
(object ClassView "Class" "Logical View::B" @2
(object ClassView "Class" "Logical View::A" @1
(object InheritView "" @5
  client @2
  supplier @1)
(object ClassDiagram "Too late")
(object ClassView "Class" "Logical View::C" @2
(object ClassView "Class" "Logical View::A" @1
(object ClassView "Class" "Logical View::B" @2
(object InheritView "" @5
  client @2
  supplier @1)
(object ClassDiagram "Last supplier")
(object ClassView "Class" "Logical View::C" @1
(object ClassView "Class" "Logical View::A" @1
(object ClassView "Class" "Logical View::B" @2
(object InheritView "" @5
  client @2
  supplier @1)
)",
     R"(
package Logical View
  class A
  class B
  generalization: B -> A
  class C
  diagram Last client
    shows class C
    shows class B
    shows class A
    shows generalization: B -> A
  diagram Too late
    shows class C
    shows class A
    shows class B
  diagram Last supplier
    shows class C
    shows class A
    shows class B
    shows generalization: B -> A
)"},
    {"the last relationship shown is current: a supplier found by name is bound to it", R"(
(object Class "A")
(object Class "C")
(object Class "B")
(object Uses_Relationship
  label "first" supplier "A")
(object Uses_Relationship
  label "last" supplier "A")
(object ClassDiagram "D")
(object ClassView "Class" "Logical View::A" @1
(object ClassView "Class" "Logical View::B" @2
(object UsesView "" @5
  client @2
  supplier @1)
(object ClassView "Class" "Logical View::C" @3
  supplier "C"
)",
     R"(
package Logical View
  class A
  class C
  class B
  dependency first: B -> A
  dependency last: B -> C
  diagram D
    shows class A
    shows class B
    shows dependency first: B -> A
    shows dependency last: B -> C
    shows class C
)"},
    {"a relationship whose other supertype has gone is still found", R"(
(object Class "A")
(object Class "E")
(object Class "B")
(object Inheritance_Relationship
  supplier "A" supplier "E")
(object Class "E") (value Text "{X,Y}")
(object ClassDiagram "D")
(object ClassView "Class" "Logical View::A" @1
(object ClassView "Class" "Logical View::B" @2
(object InheritView "" @3
  client @2
  supplier @1)
)",
     R"(
package Logical View
  class A
  class B
  generalization: B -> A
  diagram D
    shows class A
    shows class B
    shows generalization: B -> A
)"},
};

TEST(RelationshipViews, ShowWhatIsBetweenTheirEnds) {
    expectPackages(views);
}

} // namespace
