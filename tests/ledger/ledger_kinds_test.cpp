// One object of each kind of the table stands where files have it, and its line is checked.

#include "LedgerText.h"
#include "ledger/kindTable.h"

#include <gtest/gtest.h>

#include <map>

namespace {

/// A model with an object of each kind that is imported.
const LedgerText& wholeModel() {
    static const LedgerText text = LedgerText::of(
        "(object Class \"A\"\n class_attributes (list l\n  (object ClassAttribute \"x\"\n   type \"int\"))\n"
        " superclasses (list l\n  (object Inheritance_Relationship\n   supplier \"B\"))\n"
        " realized_interfaces (list l\n  (object Realize_Relationship\n   supplier \"B\"))\n"
        " used_nodes (list l\n  (object Uses_Relationship\n   supplier \"B\"))\n"
        " operations (list l\n  (object Operation \"f\"\n   result \"int\"\n   semantics \t(object Semantic_Info\n"
        "    PDL \"p\")\n   parameters (list l\n    (object Parameter \"q\"\n     type \"int\")))))\n"
        "(object Class \"B\")\n(object Parameterized_Class \"C\")\n(object Instantiated_Class \"D\")\n"
        "(object Class_Utility \"E\")\n(object Parameterized_Class_Utility \"F\")\n"
        "(object Instantiated_Class_Utility \"G\")\n(object Metaclass \"H\")\n"
        "  (object Association \"ab\"\n quid \"7\"\n roles (list l\n  (object Role \"a\"\n   supplier \"A\")\n"
        "  (object Role \"b\"\n   supplier \"B\")))\n",
        "(object ClassDiagram \"D\"\n items (list l\n (object ClassView \"Class\" \"A\" @1)\n"
        " (object ClassView \"Class\" \"B\" @2)\n (object InheritView \"\" @3\n  client \t@1\n  supplier \t@2)\n"
        " (object RealizeView \"\" @4\n  client \t@1\n  supplier \t@2)\n"
        " (object UsesView \"\" @5\n  client \t@1\n  supplier \t@2)\n (object AssociationViewNew \"ab\" @6\n  quidu "
        "\"7\")\n"
        " (object NoteView @7\n  Parent_View \t@7\n  label \t(object ItemLabel\n   label \"n\"))\n"
        " (object AttachView \"\" @8\n  client \t@7\n  supplier \t@1)\n (object Label @9\n  label \"title\")))\n");
    return text;
}

const std::map<std::string_view, const char*> imported{
    {"Petal", "as the model's origin"},
    {"Design", "as the model"},
    {"Class_Category", "as a package"},
    {"Class", "as a class"},
    {"Parameterized_Class", "as a class"},
    {"Instantiated_Class", "as a class"},
    {"Class_Utility", "as a class"},
    {"Parameterized_Class_Utility", "as a class"},
    {"Instantiated_Class_Utility", "as a class"},
    {"Metaclass", "as a class"},
    {"ClassAttribute", "as an attribute"},
    {"Operation", "as an operation"},
    {"Parameter", "as an argument"},
    {"Semantic_Info", "as a text of the operation"},
    {"Association", "as an association"},
    {"Role", "as a role"},
    {"Inheritance_Relationship", "as a generalization"},
    {"Realize_Relationship", "as a realization"},
    {"Uses_Relationship", "as a dependency"},
    {"ClassDiagram", "as a class diagram"},
    {"ClassView", "as an element of the diagram"},
    {"AssociationViewNew", "as an element of the diagram"},
    {"InheritView", "as an element of the diagram"},
    {"RealizeView", "as an element of the diagram"},
    {"UsesView", "as an element of the diagram"},
    {"NoteView", "as a note"},
    {"AttachView", "as the place of a note"},
    {"ItemLabel", "as the text of a note"},
    {"Label", "as the description of the diagram"},
};

/// Where an object of that kind, with another one in it, stands in files.
LedgerText planted(std::string_view kind) {
    const std::string object =
        "(object " + std::string(kind) + " \"n\" @5\n  quid \"1\"\n  part \t(object Font\n   size 10))\n";
    const bool isDrawn = kind.ends_with("View") || kind.ends_with("Label") || kind == "Compartment" || kind == "Font" ||
                         kind == "InterObjView" || kind == "Focus_Of_Control";
    const std::string inDiagram = "(object ClassDiagram \"D\"\n items (list l\n " + object + "))\n";
    return kind.ends_with("Diagram") ? LedgerText::of("", object)
           : isDrawn                 ? LedgerText::of("", inDiagram)
                                     : LedgerText::of("(object Class \"A\"\n part \t" + object + ")\n");
}

class Kinds : public testing::TestWithParam<ledger::KindRow> {};

TEST_P(Kinds, HaveALineThatSaysWhatBecameOfThem) {
    const std::string_view kind = GetParam().kind;
    const auto expected = imported.find(kind);
    const bool isImported = expected != imported.end();
    const LedgerText own = isImported ? LedgerText() : planted(kind);
    const LedgerText& text = isImported ? wholeModel() : own;
    ASSERT_EQ(text.failure, "");
    int found = 0;
    for (const ledger::Entry& entry : text.entries) {
        if (entry.property == nullptr && entry.kind->name == kind) {
            EXPECT_EQ(entry.reason->outcome, isImported ? ledger::Outcome::imported : ledger::Outcome::dropped);
            EXPECT_STREQ(entry.reason->text, isImported ? expected->second : GetParam().reason.text);
            ++found;
        }
    }
    EXPECT_GT(found, 0);
    EXPECT_TRUE(!isImported || text.exceptions().empty()) << text.exceptions();
}

INSTANTIATE_TEST_SUITE_P(All, Kinds, testing::ValuesIn(ledger::kindRows().begin(), ledger::kindRows().end()),
                         [](const auto& test) { return std::string(test.param.kind); });

} // namespace
