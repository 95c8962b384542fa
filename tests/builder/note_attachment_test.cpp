// Notes: whose text an attach view takes, and what it attaches it to.

#include "support/LogicalView.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct NoteRow {
    const char* what;
    const char* views; // on a diagram where class A has the view number 17 and class B has 18
    const char* ofA;   // the note of the class, or null
    const char* ofB;
    const char* ofDiagram;
};

constexpr NoteRow rows[] = {
    {"a note view without an attach view", " NoteView @25\n Parent_View @25\n label \"Check totals\"", nullptr, nullptr,
     nullptr},
    {"the client is the note, the supplier the element",
     " NoteView @25\n Parent_View @25\n label \"Check totals\"\n"
     "(object AttachView \"\" @9\n client @25\n supplier @17",
     "Check totals", nullptr, nullptr},
    {"the other way round, the text is the one read last",
     " NoteView @24\n Parent_View @24\n label \"first\"\n"
     " NoteView @25\n Parent_View @25\n label \"last\"\n"
     "(object AttachView \"\" @9\n client @17\n supplier @24",
     "last", nullptr, nullptr},
    {"or the one attached last",
     " NoteView @24\n Parent_View @24\n label \"first\"\n"
     " NoteView @25\n Parent_View @25\n label \"last\"\n"
     "(object AttachView \"\" @9\n client @24\n supplier @17\n"
     "(object AttachView \"\" @9\n client @99\n supplier @18",
     "first", "first", nullptr},
    {"of two label lines the first counts",
     " NoteView @25\n Parent_View @25\n label \"one\"\n label \"two\"\n"
     "(object AttachView \"\" @9\n client @25\n supplier @18",
     nullptr, "one", nullptr},
    {"a documentation is a text, too",
     " NoteView @25\n Parent_View @25\n documentation \"text\"\n"
     "(object AttachView \"\" @9\n client @25\n supplier @18",
     nullptr, "text", nullptr},
    {"numbers that nothing has",
     " NoteView @25\n Parent_View @25\n label \"Check totals\"\n"
     "(object AttachView \"\" @9\n client @25\n supplier @99",
     nullptr, nullptr, "Check totals"},
    {"the first element with either number",
     " NoteView @18\n Parent_View @18\n label \"t\"\n(object AttachView \"\" @9\n client @18\n supplier @17", "t",
     nullptr, nullptr},
    {"an attach view wins over the other views",
     " NoteView @25\n Parent_View @25\n label \"t\"\n"
     "(object InheritView \"\" @8\n(object AttachView \"\" @9\n client @25\n supplier @17\n",
     "t", nullptr, nullptr},
    {"a view of two numbers, of which the client's is no class",
     " NoteView @25\n Parent_View @25\n label \"t\"\n"
     "(object ClassView \"Class\" \"Logical View::A\" @17\n client @25\n supplier @17\n",
     "t", nullptr, nullptr},
};

std::string noteLine(const char* text, const char* indentation) {
    return text != nullptr ? std::string(indentation) + "note: " + text + "\n" : "";
}

TEST(Notes, AreAttachedByViewNumber) {
    for (const NoteRow& row : rows) {
        SCOPED_TRACE(row.what);
        const ImportedModel imported =
            importLogicalView(std::string("(object Class \"A\")\n(object Class \"B\")\n(object ClassDiagram \"D\")\n"
                                          "(object ClassView \"Class\" \"Logical View::A\" @17\n"
                                          "(object ClassView \"Class\" \"Logical View::B\" @18\n") +
                              row.views + "\n");
        EXPECT_EQ(packagesOf(imported), "\npackage Logical View\n  class A\n" + noteLine(row.ofA, "    ") +
                                            "  class B\n" + noteLine(row.ofB, "    ") + "  diagram D\n" +
                                            noteLine(row.ofDiagram, "    ") + "    shows class A\n    shows class B\n");
    }
}

TEST(Notes, AreKeptUntilADiagramIsCurrent) {
    const ImportedModel imported = importLogicalView(R"(
(object Class "A")
  (object NoteView @25
   Parent_View @25
   label "early"
(object AttachView "" @9
   client @25
   supplier @0
(object ClassDiagram "D")
(object ClassView "Class" "Logical View::A" @17
(object AttachView "" @9
   client @25
   supplier @17
)");
    EXPECT_EQ(packagesOf(imported), R"(
package Logical View
  class A
    note: early
  diagram D
    shows class A
)");
}

} // namespace
