// Associations, their roles, association classes and views, as the outline of the imported model shows them.

#include "support/LogicalView.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr LogicalViewRow associations[] = {
    {"only an empty name and the whole mark mean that there is no name", R"(
(object Class "A")
 (object Association "")
  (object Role "$UNNAMED$0" supplier "Logical View::A")
  (object Role "" supplier "A")
 (object Association "$UNNAMED$12")
  (object Role "$UNNAMED$1" supplier "A")
  (object Role "$UNNAMED" supplier "A")
 (object Association "$UNNAMED")
  (object Role "UNNAMED$" supplier "A")
  (object Role "r" supplier "A")
)",
     R"(
package Logical View
  class A
  association: A, A
    role: A (source)
    role: A
  association: A, A
    role: A (source)
    role $UNNAMED: A
  association $UNNAMED: A, A
    role UNNAMED$: A (source)
    role r: A
)"},
    {"a role's class may be defined later; two roles may wait for it", R"(
 (object Association "owns")
  (object Role "car" supplier "Logical View::Car")
  (object Role "spare" supplier "Car")
(object Class "Car"
object ClassAttribute "wheels"
)",
     R"(
package Logical View
  association owns: Car, Car
    role car: Car (source)
    role spare: Car
  class Car
    - wheels: int
)"},
    {"a role read while a diagram is current gets no class, and its class stays waiting", R"(
(object ClassDiagram "D")
 (object Association "owns")
  (object Role "car" supplier "Logical View::Car")
  (object Role "owner" supplier "Logical View::Owner")
)",
     R"(
package Logical View
  diagram D
package Use Case Classes in Class Diagrams
  class Car
  class Owner
)"},
    {"an association class is an ordinary class between two new associations", R"(
(object Class "Order")
(object Class "Product")
 (object Association "contains")
  (object Role "order" supplier "Order" client_cardinality (value cardinality "0..n")
  (object Role "product" supplier "Product" client_cardinality (value cardinality "1..n")
  AssociationClass "Logical View::Line"
(object Class "Line")
)",
     R"(
package Logical View
  class Order
  class Product
  association contains: Order, Product
    role order: Order [0..*] (source)
    role product: Product [1..*]
  association Order_Line: Order, Line
    role: Order [1] (source)
    role: Line [1..*]
  association Line_Product: Line, Product
    role: Line [0..*] (source)
    role: Product [1]
  class Line
)"},
    {"an association class needs two roles that have a class", R"(
(object Class "A") AssociationClass "X"
 (object Association "one")
  (object Role "r" supplier "A") AssociationClass "X"
  (object Role "s" AssociationClass "X" supplier "A"
)",
     R"(
package Logical View
  class A
  association one: A, A
    role r: A (source)
    role s: A
)"},
    {"a role without an association is none", R"(
(object Class "A")
  (object Role "r" client_cardinality (value cardinality "7")
)",
     R"(
package Logical View
  class A [7]
)"},
};

TEST(Associations, HaveRolesAndClasses) {
    expectPackages(associations);
}

constexpr LogicalViewRow views[] = {
    {"an association read before its views is the same on all diagrams", R"(
(object Class "A")
 (object Association "a") quid "1"
  (object Role "r" supplier "A")
  (object Role "s" supplier "A")
(object ClassDiagram "D")
(object AssociationViewNew "view" @1 quidu "1"
(object ClassDiagram "E")
(object AssociationViewNew "view" @2 quidu "1" quidu "2"
)",
     R"(
package Logical View
  class A
  association a: A, A
    role r: A (source)
    role s: A
  diagram D
    shows association a: A, A
  diagram E
    shows association a: A, A
)"},
    {"one read after its views takes over their diagrams and notes", R"(
(object Class_Category "First"
 logical_presentations (list)
(object ClassDiagram "D")
(object AssociationViewNew "view" @1 quidu "1"
  Parent_View @7
  (object NoteView @25
   Parent_View @25
   label "checked"
(object AttachView "" @26
   client @25
   supplier @7
(object ClassDiagram "E")
(object AssociationViewNew "view" @1 quidu "1"
(object Class_Category "Second"
(object Class "A")
 (object Association "a") quid "1"
  (object Role "r" supplier "A")
  (object Role "s" supplier "A")
)",
     R"(
package Logical View
  package First
    diagram D
      shows association a: A, A
    diagram E
      shows association a: A, A
  package Second
    class A
    association a: A, A
      note: checked
      role r: A (source)
      role s: A
)"},
    {"a placeholder counts under the quid of its view, whatever it was given before", R"(
(object Class_Category "First"
 logical_presentations (list)
(object ClassDiagram "D")
(object AssociationViewNew "view" @1
 quid "old" quidu "new"
(object Class_Category "Second"
(object Class "A")
 (object Association "a") quid "old"
  (object Role "r" supplier "A")
  (object Role "s" supplier "A")
 (object Association "b") quid "new"
  (object Role "r" supplier "A")
  (object Role "s" supplier "A")
)",
     R"(
package Logical View
  package First
    diagram D
      shows association b: A, A
  package Second
    class A
    association a: A, A
      role r: A (source)
      role s: A
    association b: A, A
      role r: A (source)
      role s: A
)"},
    {"an association begun between a view and its quid is the view's; found to be shown itself, it stays", R"(
(object Class "A")
(object ClassDiagram "D")
(object AssociationViewNew "view" @1
 (object Association "a") quid "1" quidu "1"
(object Class_Category "P"
  (object Role "r" supplier "A")
  (object Role "s" supplier "A")
)",
     R"(
package Logical View
  package P
  class A
  association a: A, A
    role r: A (source)
    role s: A
  diagram D
    shows association a: A, A
)"},
    {"what a view shows gets the notes of the view, which goes", R"(
(object ClassDiagram "D")
(object AssociationViewNew "noted" @1 quidu "1"
  Parent_View @7
  (object NoteView @25
   Parent_View @25
   label "checked"
(object AttachView "" @26
   client @25
   supplier @7
(object AssociationViewNew "shown" @2 quidu "2"
(object AssociationViewNew "view" @3
 (object Association "takes over the first placeholder, and is deleted as a view") quid "1" quidu "2"
(object Class_Category "P"
(object Class "A")
 (object Association "a") quid "2"
  (object Role "r" supplier "A")
  (object Role "s" supplier "A")
)",
     R"(
package Logical View
  package P
    class A
    association a: A, A
      note: checked
      role r: A (source)
      role s: A
  diagram D
    shows association a: A, A
)"},
    {"an association has the last view number read in its view", R"(
(object Class "A")
 (object Association "a") quid "1"
  (object Role "r" supplier "A")
  (object Role "s" supplier "A")
(object ClassDiagram "D")
(object ClassView "Class" "Logical View::A" @5
(object AssociationViewNew "view" @6 quidu "1"
  Parent_View @5
  (object RoleView "" @7
   Parent_View @8
   supplier @5)
  (object NoteView @25
   Parent_View @25
   label "on the association"
(object AttachView "" @26
   client @25
   supplier @8)
(object AttachView "" @27
   client @25
   supplier @5)
)",
     R"(
package Logical View
  class A
    note: on the association
  association a: A, A
    note: on the association
    role r: A (source)
    role s: A
  diagram D
    shows class A
    shows association a: A, A
)"},
    {"or the one read while nothing was active, which only the next association takes", R"(
(object Class "A")
 (object Association "a") quid "1"
  (object Role "r" supplier "A")
  (object Role "s" supplier "A")
(object ClassDiagram "D")
  (object NoteView @25
   Parent_View @25
   label "n"
(object ClassView "Class" "Logical View::A" @3
(object UsesView "" @4
 Parent_View @5
(object AssociationViewNew "view" @6 quidu "1"
(object AttachView "" @26
   client @25
   supplier @5)
 Parent_View @6
(object AssociationViewNew "view" @7 quidu "2"
(object AttachView "" @27
   client @25
   supplier @5)
)",
     R"(
package Logical View
  class A
  association a: A, A
    note: n
    role r: A (source)
    role s: A
  diagram D
    note: n
    shows class A
    shows association a: A, A
)"},
    {"or that of its placeholder", R"(
(object Class "A")
(object ClassDiagram "D")
(object AssociationViewNew "view" @6 quidu "1"
  Parent_View @7
 (object Association "a") quid "1"
  (object NoteView @25
   Parent_View @25
   label "on the association"
(object AttachView "" @26
   client @25
   supplier @7
(object Class_Category "P"
  (object Role "r" supplier "A")
  (object Role "s" supplier "A")
)",
     R"(
package Logical View
  package P
  class A
  association a: A, A
    note: on the association
    role r: A (source)
    role s: A
  diagram D
    shows association a: A, A
)"},
    {"outside a class diagram, and outside a view, a quid shows nothing", R"(
(object Class "A")
 (object Association "a") quid "1"
  (object Role "r" supplier "A")
  (object Role "s" supplier "A")
(object AssociationViewNew "view" @1 quidu "1"
(object ClassDiagram "D")
(object ClassView "Class" "Logical View::A" @3
 quidu "1"
)",
     R"(
package Logical View
  class A
  association a: A, A
    role r: A (source)
    role s: A
  diagram D
    shows class A
)"},
};

TEST(AssociationViews, ShowWhatTheirQuidStandsFor) {
    expectPackages(views);
}

TEST(Cardinality, IsTranslatedForARoleAndForAClass) {
    constexpr struct {
        const char* text;
        const char* multiplicity;
    } rows[] = {{"0..n", "0..*"}, {"1..n", "1..*"}, {"1..1", "1"},      {"0..0", "0"},
                {"n", "n"},       {"1", "1"},       {"0..n ", "0..n "}, {"0..N", "0..N"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const std::string line = std::string(" client_cardinality (value cardinality \"") + row.text + "\")\n";
        const ImportedModel imported =
            importLogicalView("(object Class \"A\"\n" + line + " (object Association \"a\"\n (object Role \"r\"\n" +
                              " supplier \"A\"\n" + line + " (object Role \"s\"\n supplier \"A\"\n");
        EXPECT_EQ(packagesOf(imported), std::string("\npackage Logical View\n  class A [") + row.multiplicity +
                                            "]\n  association a: A, A\n    role r: A [" + row.multiplicity +
                                            "] (source)\n    role s: A\n");
    }
}

} // namespace
