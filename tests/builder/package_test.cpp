#include "support/LogicalView.h"
#include "support/RepositoryInvariants.h"

#include <gtest/gtest.h>

namespace {

constexpr LogicalViewRow nesting[] = {
    {"the end of a list closes its package, and moves up once that is closed: diagrams go to the list's own", R"(
    (object Class_Category "A"
        (object Class_Category "B"
            (object Class_Category ""
                (object Class "InC"
            logical_presentations (list
                (object ClassDiagram "of C"
        logical_presentations (list
            (object ClassDiagram "of B"
    logical_presentations (list
        (object ClassDiagram "of A"
    (object Class_Category "D"
    (object Class_Category
        (object Class "InD"
    logical_presentations (list
        (object ClassDiagram "of D"
 logical_presentations (list
    (object ClassDiagram "of all"
)",
     R"(
package Logical View
  package A
    package B
      package 
        class InC
        diagram of C
      diagram of B
    diagram of A
  package D
    class InD
    diagram of D
  diagram of all
)"},
    {"a logical view in another one: later packages without a current one go to the inner one", R"(
    (object Class_Category "A"
        (object Class_Category "Logical View"
        logical_presentations (list
    logical_presentations (list
 logical_presentations (list
 logical_presentations (list
(object Class_Category "Late"
)",
     R"(
package Logical View
  package A
    package Logical View
      package Late
)"},
    {"behind the closed logical view: beside it", R"(
 logical_presentations (list
(object Class_Category "Beside"
)",
     R"(
package Logical View
package Beside
)"},
    {"behind the logical view that has been left: in it, and what has no package is ignored", R"(
 logical_presentations (list
 logical_presentations (list
(object Class "Lost"
(object ClassDiagram "lost"
(object Class_Category "Late"
    (object Class "Kept"
)",
     R"(
package Logical View
  package Late
    class Kept
)"},
    {"a new package has no current diagram", R"(
    (object ClassDiagram "D"
    (object Class_Category "A"
    (object ClassView "Class" "Nowhere" @1
)",
     R"(
package Logical View
  package A
  diagram D
)"},
};

/// A whole body of a file and its outline.
struct BodyRow {
    const char* what;
    const char* body;
    const char* outline;
};

constexpr BodyRow skipping[] = {
    {"nothing before the logical view is read", R"(
(object Class_Category "Use Case View"
    (object Class "Actor"
    (object Class_Category "Stories"
    logical_presentations (list
 logical_presentations (list
(object Class_Category "logical view"
(object Class_Category "Logical View "
(object Class_Category "Logical View"
    (object Class_Category "A"
)",
     R"(
package Logical View
  package A
)"},
    {"no logical view, no model", R"(
(object Class_Category "Component View"
    (object Class "A"
)",
     "\n"},
    {"a use-case view inside: it and its categories are skipped, and its end closes the current package", R"(
(object Class_Category "Logical View"
    (object Class_Category "Before"
    logical_presentations (list
    (object Class_Category "Use Case View"
        (object Class_Category "Logical View"
        logical_presentations (list
    logical_presentations (list
    (object Class "Lost"
    (object Class_Category "After"
        (object Class "Kept"
)",
     R"(
package Logical View
  package Before
  package After
    class Kept
)"},
    {"another spelling is none; one that does not end: nothing that follows is a package", R"(
(object Class_Category "Logical View"
    (object Class_Category "Use Case view"
    (object Class_Category "Use Case View"
    (object Class_Category "Lost"
        (object Class "A"
)",
     R"(
package Logical View
  package Use Case view
    class A
)"},
};

TEST(PackageTest, NestingFollowsTheListsOfTheFile) {
    expectPackages(nesting);
}

TEST(PackageTest, OnlyTheLogicalViewIsRead) {
    for (const BodyRow& row : skipping) {
        ImportedModel imported = ImportedModel::ofBody(row.body);
        EXPECT_EQ(packagesOf(imported), row.outline) << row.what;
        EXPECT_EQ(brokenInvariant(imported.model), "") << row.what;
    }
}

} // namespace
