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

struct EndRow {
    const char* what;
    const char* logicalView;
    const char* failure;
};

TEST(DeferredResolution, LeavesNothingForTheNextImport) {
    constexpr EndRow rows[] = {
        {"an association that is never read",
         "(object ClassDiagram \"D\")\n(object AssociationViewNew \"v\" @1\n quidu \"1\"\n"
         "(object AssociationViewNew \"w\" @2\n",
         ""},
        {"a note that is never attached", " NoteView @25\n Parent_View @25\n label \"t\"\n", ""},
        {"classes of one name, and a failure",
         "(object Class \"A\")\n(object ClassDiagram \"D\")\n(object AssociationViewNew \"v\" @1\n quidu \"1\"\n"
         " supplier \"W\"\n supplier \"W\"\n(object Class_Category \"P\"\n(object Class \"B\")\n supplier @0\n",
         "[QEV_RRSE_F0009] Diagram not yet created"},
    };
    for (const EndRow& row : rows) {
        SCOPED_TRACE(row.what);
        ImportedModel imported = importLogicalView(row.logicalView);
        EXPECT_EQ(imported.failure, row.failure);
        EXPECT_EQ(brokenInvariant(imported.model), "");
        EXPECT_EQ(rose::toBeClasses.getCount(), 0);
        EXPECT_EQ(rose::toBeAssociations.getCount(), 0);
        EXPECT_EQ(rose::toBeNotes.getCount(), 0);
        EXPECT_EQ(rose::packages.getCount(), 0);
        EXPECT_EQ(rose::theFile, nullptr);

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
    }
}

} // namespace
