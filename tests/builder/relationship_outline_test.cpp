// Generalizations, realizations and dependencies, and the views that show them.

#include "support/LogicalView.h"

#include <gtest/gtest.h>

namespace {

constexpr LogicalViewRow relationships[] = {
    {"a supplier found by name goes to the last relationship made, a new one to that which is active", R"(
(object Class "A")
(object Class "C")
(object Class "B")
(object Inheritance_Relationship
  supplier "A" supplier "C")
(object Realize_Relationship
  supplier "A" supplier "C")
object ClassAttribute "takes nothing" supplier "A2" supplier "A"
(object Class "A2")
(object Class "E") (value Text "{X,Y}")
(object Uses_Relationship
  supplier "A")
)",
     R"(
package Logical View
  class A
  class C
  class B
    - takes nothing: int
  generalization: B -> A, C
  realization: B -> A
  class A2
  dependency: ? -> A
)"},
    {"each kind is bound to a class that has not been read yet", R"(
(object Class "A")
(object Inheritance_Relationship
  supplier "B")
(object Realize_Relationship
  supplier "C")
(object Uses_Relationship
  supplier "D")
(object Class "B")
)",
     R"(
package Logical View
  class A
  generalization: A -> B
  realization: A -> C
  dependency: A -> D
  class B
package Use Case Classes in Class Diagrams
  class C
  class D
)"},
};

TEST(Relationships, AreBoundAtBothEnds) {
    expectPackages(relationships);
}

constexpr LogicalViewRow views[] = {
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
