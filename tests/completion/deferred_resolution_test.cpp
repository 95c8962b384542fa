// What becomes of that which still waits when the file has been read.

#include "builder/BuilderState.h"
#include "support/LogicalView.h"
#include "support/RepositoryInvariants.h"

#include <gtest/gtest.h>

namespace {

constexpr LogicalViewRow waiting[] = {
    {"where nothing is validated", R"(
 (object Association "a")
  (object Role "r" supplier "Undefined" keys (list (object ClassAttribute "untyped")
  (object Role "s" supplier "Undefined")
)",
     R"(
package Logical View
  association a: Undefined, Undefined
    role r: Undefined (source)
    role s: Undefined (foreign key untyped)
package Use Case Classes in Class Diagrams
  class Undefined
    - untyped
    primary key untyped: untyped
    foreign key: untyped -> untyped of Undefined
)"},
};

TEST(DeferredResolution, GivesWaitingClassesAPackage) {
    expectPackages(waiting);
}

TEST(DeferredResolution, LeavesNothingForTheNextImport) {
    // An association that is never read, a note that is never attached, classes of one name; at last, a failure.
    std::string content = "(object Class \"A\")\n(object ClassDiagram \"D\")\n(object AssociationViewNew \"v\" @1\n"
                          " quidu \"1\"\n supplier \"W\"\n supplier \"W\"\n"
                          " NoteView @25\n Parent_View @25\n label \"t\"\n(object AssociationViewNew \"w\" @2\n";
    for (const char* failure : {"", "[QEV_RRSE_F0009] Diagram not yet created"}) {
        ImportedModel imported = importLogicalView(content);
        EXPECT_EQ(imported.failure, failure);
        EXPECT_EQ(brokenInvariant(imported.model), "");
        EXPECT_EQ(rose::state.toBeClasses.getCount() + rose::state.toBeAssociations.getCount() +
                      rose::state.toBeNotes.getCount() + rose::state.packages.getCount(),
                  0);
        EXPECT_EQ(rose::state.theFile, nullptr);

        // The same quids, names and numbers mean nothing to the next import.
        const ImportedModel next = importLogicalView(R"(
(object Class "A")
 (object Association "a") quid "1"
(object ClassDiagram "D")
(object ClassView "Class" "Logical View::A" @17
(object AttachView "" @9
   client @25
   supplier @17
)");
        EXPECT_EQ(packagesOf(next), R"(
package Logical View
  class A
    note: 
  diagram D
    shows class A
)");
        content += "(object Class_Category \"P\"\n(object Class \"B\")\n supplier @0\n";
    }
}

} // namespace
