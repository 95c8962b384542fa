// The kinds of objects in the table of the ledger, and the damages and bad bytes of a file.

#include "LedgerText.h"
#include "ledger/kindTable.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using ledger::KindRow;
using ledger::Subject;

/// A model with an object of each subject of the import.
LedgerText wholeModel() {
    return LedgerText::of(
        "(object Class \"A\"\n class_attributes (list l\n  (object ClassAttribute \"x\"\n   type \"int\"))\n"
        " superclasses (list l\n  (object Inheritance_Relationship\n   supplier \"B\"))\n"
        " realized_interfaces (list l\n  (object Realize_Relationship\n   supplier \"B\"))\n"
        " used_nodes (list l\n  (object Uses_Relationship\n   supplier \"B\"))\n"
        " operations (list l\n  (object Operation \"f\"\n   result \"int\"\n   semantics \t(object Semantic_Info\n"
        "    PDL \"p\")\n   parameters (list l\n    (object Parameter \"q\"\n     type \"int\")))))\n"
        "(object Class \"B\")\n(object Metaclass \"H\")\n"
        "  (object Association \"ab\"\n quid \"7\"\n roles (list l\n  (object Role \"a\"\n   supplier \"A\")\n"
        "  (object Role \"b\"\n   supplier \"B\")))\n",
        "(object ClassDiagram \"D\"\n items (list l\n (object ClassView \"Class\" \"A\" @1)\n"
        " (object ClassView \"Class\" \"B\" @2)\n (object InheritView \"\" @3\n  client \t@1\n  supplier \t@2)\n"
        " (object RealizeView \"\" @4\n  client \t@1\n  supplier \t@2)\n"
        " (object UsesView \"\" @5\n  client \t@1\n  supplier \t@2)\n (object AssociationViewNew \"ab\" @6\n  quidu "
        "\"7\")\n"
        " (object NoteView @7\n  Parent_View \t@7\n  label \t(object ItemLabel\n   label \"n\"))\n"
        " (object AttachView \"\" @8\n  client \t@7\n  supplier \t@1)\n (object Label @9\n  label \"title\")))\n");
}

/// The ledger of a file with an object of that kind, and one within it, at its usual place.
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

TEST(LedgerKinds, EachIsOfASubjectThatIsImportedOrHasAReason) {
    std::set<Subject> imported;
    for (const KindRow& row : ledger::kindRows()) {
        EXPECT_EQ(&ledger::kindRow(row.kind), &row) << "a kind stands in the table twice: " << row.kind;
        if (row.reason.outcome == ledger::Outcome::imported) {
            imported.insert(row.subject);
        } else { // labels are imported as parts of a note only
            EXPECT_TRUE(row.subject == Subject::none || row.subject == Subject::treeView ||
                        row.subject == Subject::label);
        }
    }
    const LedgerText whole = wholeModel();
    EXPECT_EQ(whole.failure + whole.exceptions(), "");
    for (const ledger::Entry& entry : whole.entries) {
        if (entry.property == nullptr) {
            const KindRow& row = ledger::kindRow(entry.kind->name);
            EXPECT_TRUE(entry.reason->text == std::string_view(row.reason.text) || row.subject == Subject::label);
            imported.erase(row.subject);
        }
    }
    EXPECT_TRUE(imported.empty()) << "a subject is missing in the model";
}

TEST(LedgerKinds, ThoseThatAreDroppedAreToldOfWhereverTheyStand) {
    for (const KindRow& row : ledger::kindRows()) {
        if (row.reason.outcome == ledger::Outcome::dropped) {
            int found = 0;
            for (const ledger::Entry& entry : planted(row.kind).entries) {
                if (entry.property == nullptr && entry.kind->name == row.kind) {
                    EXPECT_STREQ(entry.reason->text, row.reason.text);
                    ++found;
                }
            }
            EXPECT_GT(found, 0) << row.kind;
        }
    }
}

TEST(LedgerBytes, AreToldWithTheirPlaces) {
    const LedgerText text = LedgerText::of(
        "(object Class \"A\xB7\"\n documentation \t\n|ok\n|\xD6\xD0\xB7 \xB7 y\n stereotype \"\xB7 \"\n"
        " word\xB7 \t12\n kind \tw\xB7\n cardinality \t(value c\xB7 \"1\")\n operations \t(list l\xB7))\n"
        "(object K\xB7 \"m\xB7 \" @3)\n(object K\xB7)",
        "", "windows-936");
    std::string found;
    for (const ledger::BadBytes& bad : text.badBytes) {
        found += std::to_string(bad.place.line - LedgerText::firstLine + 1) + ":" + std::to_string(bad.place.column) +
                 " " + std::to_string(bad.bytes.size()) + "\n";
    }
    EXPECT_EQ(found, "1:17 1\n4:4 1\n4:6 1\n5:14 1\n6:6 1\n7:9 1\n8:23 1\n9:21 1\n10:10 1\n10:14 1\n11:10 1\n");
}

TEST(LedgerDamages, AreToldAndCounted) {
    const LedgerText text = LedgerText::of("(object Class \"A\")\n junk words 17 \"text\" )\n(object Class \"B\"\n"
                                           " documentation \"unclosed\n stereotype \"s\")");
    std::string found;
    for (const ledger::DamagedPlace& damaged : text.ledger.damages) {
        found += std::to_string(damaged.damage.place.line - LedgerText::firstLine + 1) + " " +
                 notation::damageWord(damaged.damage.kind) + "\n";
    }
    EXPECT_EQ(found,
              "2 missingClose\n2 unnamedValue\n3 missingClose\n4 unclosedText\n5 surplusClose\n7 surplusClose\n");
    const LedgerText many = LedgerText::of(std::string(2 * ledger::mostDamages, ','));
    EXPECT_EQ(many.ledger.damages.size(), ledger::mostDamages);
    EXPECT_GE(many.ledger.damageCount, 2 * ledger::mostDamages);
}

} // namespace
