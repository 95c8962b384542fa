// Associations, their roles, association classes and views, as the outline of the imported model shows them.

#include "support/LogicalView.h"

#include <gtest/gtest.h>

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
    {"a role's class may be defined later, by two roles; on a diagram it gets none, and that class stays waiting", R"(
  (object Role "of no association")
 (object Association "owns")
  (object Role "car" supplier "Logical View::Car")
  (object Role "spare" supplier "Car")
(object Class "Car"
object ClassAttribute "wheels"
  (object Role "none" client_cardinality (value cardinality "7")
(object ClassDiagram "D")
 (object Association "owns")
  (object Role "car" supplier "Logical View::Car")
  (object Role "owner" supplier "Logical View::Owner")
)",
     R"(
package Logical View
  association owns: Car, Car
    role car: Car (source)
    role spare: Car
  class Car [7]
    - wheels: int
  diagram D
package Use Case Classes in Class Diagrams
  class Car
  class Owner
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
};

TEST(Associations, HaveRolesAndClasses) {
    expectPackages(associations);
}

constexpr LogicalViewRow views[] = {
    {"an association read before its views is the same on all diagrams; its first quid counts, and no other's", R"(
(object Class "A") quid "2"
 (object Association "a") quid "1" quid "2"
  (object Role "r" supplier "A") quid "2"
  (object Role "s" supplier "A")
(object ClassDiagram "D") quid "2"
(object AssociationViewNew "view" @1 quidu "1"
(object AssociationViewNew "view of nothing" @1 quidu "2"
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
};

TEST(AssociationViews, ShowWhatTheirQuidStandsFor) {
    expectPackages(views);
}

} // namespace
