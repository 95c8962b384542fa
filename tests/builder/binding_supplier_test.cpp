// What a "supplier" line is bound to.

#include "support/LogicalView.h"
#include "support/RepositoryInvariants.h"

#include <gtest/gtest.h>

namespace {

constexpr LogicalViewRow suppliers[] = {
    {"a qualified name, and one that waits for its definition", R"(
(object Class_Category "Sales"
(object Class "Customer")
 logical_presentations (list)
(object Class_Category "Stock"
 (object Association "a")
  (object Role "r" supplier "Logical View::Sales::Customer")
  (object Role "s" supplier "Logical View::Stock::Later")
 (object Association "b")
  (object Role "r" supplier "Later")
  (object Role "s" supplier "Sales::Customer")
(object Class "Logical View::Stock::Later")
)",
     R"(
package Logical View
  package Sales
    class Customer
  package Stock
    association a: Customer, Later
      role r: Customer (source)
      role s: Later
    association b: Later, Sales::Customer
      role r: Later (source)
      role s: Sales::Customer
    class Later
package Use Case Classes in Class Diagrams
  class Sales::Customer
)"},
    {"in a role view and while nothing is active nothing is bound; a diagram finds its own classes only", R"(
(object Class "A")
(object Class "B")
(object Inheritance_Relationship
 (object RoleView "" @3
  supplier "A") supplier "A")
(object Class "E") (value Text "{X,Y}") supplier "New"
(object ClassDiagram "D") supplier "A"
)",
     R"(
package Logical View
  class A
  class B
  generalization: B -> A
  diagram D
package Use Case Classes in Class Diagrams
  class A
)"},
    {"outside a diagram, a view number stands for a class of the package", R"(
(object Class "A")
 Parent_View @7
(object Class "B")
 Parent_View @8
 (object Association "a")
  (object Role "r"
   supplier @8)
  (object Role "s"
   supplier @7)
  supplier @9
)",
     R"(
package Logical View
  class A
  class B
  association a: B, A
    role r: B (source)
    role s: A
)"},
    {"a view of two numbers shows the first generalization between their classes", R"(
(object Class "A")
(object Class "B")
(object Inheritance_Relationship
  exportControl "Protected" supplier "A")
(object Inheritance_Relationship
  supplier "A")
(object ClassDiagram "D")
(object ClassView "Class" "Logical View::A" @1
(object ClassView "Class" "Logical View::B" @2
  client @2
  supplier @1
(object ClassDiagram "E")
(object ClassView "Class" "Logical View::A" @1
(object ClassView "Class" "Logical View::B" @2
  client @1
  supplier @2
  supplier @3
)",
     R"(
package Logical View
  class A
  class B
  generalization: B -> A (protected)
  generalization: B -> A
  diagram D
    shows class A
    shows class B
    shows generalization: B -> A (protected)
  diagram E
    shows class A
    shows class B
)"},
};

TEST(Binding, DependsOnWhatIsRead) {
    expectPackages(suppliers);
}

TEST(Binding, AViewWithoutADiagramEndsTheImport) {
    // Whatever the import has made until then goes with it: what waits, what was attached to nothing, what is bound.
    ImportedModel imported = importLogicalView(R"(
(object Class "A")
object ClassAttribute "x"
object ClassAttribute "x"
  (object Parameter "of nothing")
(object Class "B")
(object Inheritance_Relationship
  supplier "Waiting")
  (object NoteView @25
   Parent_View @25
   label "unattached"
(object AssociationViewNew "unresolved" @1
 (object Association "a") quid "1"
  (object Role "r" supplier "A" keys (list (object ClassAttribute "k")
(object Class "C"
  supplier @0
)");
    EXPECT_EQ(imported.failure, "[QEV_RRSE_F0009] Diagram not yet created");
    EXPECT_EQ(imported.tree(), "model\n");
    EXPECT_EQ(brokenInvariant(imported.model), "");
}

} // namespace
