// Each construct that a model file may hold is planted once, and its line in the ledger checked.

#include "LedgerText.h"

#include <gtest/gtest.h>

namespace {

struct Row {
    const char* elements;
    const char* expected; // all that was not imported as it is
};

class Planted : public testing::TestWithParam<Row> {};

TEST_P(Planted, IsTold) {
    const LedgerText text = LedgerText::of(GetParam().elements);
    ASSERT_EQ(text.failure, "");
    EXPECT_EQ(text.exceptions(), GetParam().expected) << GetParam().elements;
}

constexpr const char* twoClasses = "(object Class \"A\")\n(object Class \"B\")\n";

INSTANTIATE_TEST_SUITE_P(
    Classes, Planted,
    testing::Values(
        Row{"(object Class \"A\"\n stereotype \"s\"\n abstract TRUE\n documentation \"d\"\n class_attributes (list l\n"
            "  (object ClassAttribute \"x\"\n   type \"int\"\n   initv \"1\"\n   exportControl \"Public\"\n"
            "   Containment \"By Value\"\n   static TRUE\n   derived TRUE)))",
            ""},
        Row{"(object Class_Category \"P\"\n logical_presentations \t(list l))\n(object Class \"A\")",
            "3 Class A: changed in the model it is in \"P\"\n"},
        Row{"(object Class \"A\")\n(object Class \"A\"\n language \"Java\")",
            "2 Class A: changed it was merged into the class of the same name from line 8\n"
            "3 Class A.language: dropped the model has no place for it\n"},
        Row{"(object Class \"A\"\n class_attributes (list l\n (object ClassAttribute \"x\"\n  type \"int\")\n"
            " (object ClassAttribute \"x\"\n  type \"int\")\n (object ClassAttribute \"y\")))",
            "5 ClassAttribute x: LOST its class already has an attribute of that name, from line 10\n"
            "7 ClassAttribute y: changed no type is given; the model has \"int\"\n"},
        Row{"(object Class \"Col\"\n attributes (list l\n (object Attribute\n  value \t(value Text \"{R,G}\")))\n"
            " class_attributes (list l\n (object ClassAttribute \"x\"\n  type \"int\")))\n"
            "(object Class \"U\"\n class_attributes (list l\n (object ClassAttribute \"c\"\n  type \"Col\")))",
            "1 Class Col: changed it became an enumerated type\n"
            "3 Attribute: dropped properties of tools are not imported\n"
            "4 Attribute.value: changed imported as the values of the type \"Col\"\n"
            "6 ClassAttribute x: LOST its class became an enumerated type\n"},
        Row{"(object Class \"A \\\"b\\\"\"\n documentation \"say \\\"so\\\"\")",
            "1 Class A \"b\": changed the name is cut at its first inner quote, and backslashes are kept: A \\\n"
            "2 Class A \"b\".documentation: changed the text is cut at its first inner quote, and backslashes are "
            "kept\n"},
        Row{"(object Class \"A\"\n persistence \"Transient\"\n cardinality (value cardinality \"n\"))",
            "2 Class A.persistence: changed the model has persistent\n"
            "3 Class A.cardinality: LOST the import does not recognize it in this form\n"},
        Row{"(object Class \"A\"\n class_attributes (list l\n (object ClassAttribute \"x\"\n  type \"int\"\n"
            "  static FALSE)))",
            "5 ClassAttribute x.static: changed any value counts as TRUE\n"},
        Row{"(object UseCase \"U\"\n documentation \"of U\")\n(object Class \"A\"\n documentation \"of A\")",
            "1 UseCase U: dropped use cases are not imported\n"
            "2 UseCase U.documentation: changed read as part of the preceding element; in the model it belongs to "
            "\"Logical View\"\n"},
        Row{"(object Class \"A\"\n documentation \"of A\")\n(object UseCase \"U\"\n documentation \"of U\")",
            "2 Class A.documentation: changed combined with other texts: \"of Uof A\"\n"
            "3 UseCase U: dropped use cases are not imported\n"
            "4 UseCase U.documentation: changed read as part of the preceding element; in the model it belongs to "
            "\"A\"\n"},
        Row{"(object Class \"A\"\n statemachine \t(object State_Machine \"m\"\n  states (list l\n"
            "   (object State \"s\")))\n class_attributes (list l\n (object ClassAttribute \"x\"\n  type \"int\")))",
            "2 Class A.statemachine: dropped state machines and activities are not imported\n"
            "2 State_Machine m: dropped state machines and activities are not imported\n"
            "4 State s: dropped state machines and activities are not imported\n"
            "6 ClassAttribute x: LOST the import skips everything after this kind of object until the next "
            "class, association, class diagram or package: State_Machine at line 9\n"},
        Row{"(object Odd \"o\"\n x 1)", "1 Odd o: dropped the import does not know objects of this kind\n"}));

// What stands in one object and goes to another one that stands in front of it.
constexpr const char* toB = "changed read as part of the preceding element; in the model it belongs to "
                            "\"B\"\n";

TEST(PlantedAstray, IsToldWhereTheModelHasIt) {
    struct AstrayRow {
        const char* elements;
        std::string expected;
    };
    for (const AstrayRow& row : {
             AstrayRow{
                 "(object Class \"A\")\n(object Class \"B\")\n(object UseCase \"U\"\n superclasses (list l\n"
                 "  (object Inheritance_Relationship\n   supplier \"A\"))\n class_attributes (list l\n"
                 "  (object ClassAttribute \"z\"\n   type \"char\"))\n operations (list l\n"
                 "  (object Operation \"op\"\n   result \"int\"\n   parameters (list l\n"
                 "    (object Parameter \"p\"\n     type \"int\"))))\n abstract \tTRUE)",
                 "3 UseCase U: dropped use cases are not imported\n5 Inheritance_Relationship: " + std::string(toB) +
                     "8 ClassAttribute z: " + toB + "11 Operation op: " + toB + "16 UseCase U.abstract: " + toB},
             AstrayRow{"(object Class \"B\")\n(object UseCase \"U\"\n stereotype \"s\"\n persistence \"Persistent\"\n"
                       " space \"3\"\n abstract FALSE)",
                       "2 UseCase U: dropped use cases are not imported\n3 UseCase U.stereotype: " + std::string(toB) +
                           "4 UseCase U.persistence: " + toB + "5 UseCase U.space: " + toB},
             AstrayRow{"(object Class \"B\"\n operations (list l\n  (object Operation \"f\"\n   result \"int\"\n"
                       "   abstract TRUE)))",
                       "5 Operation f.abstract: " + std::string(toB)},
             // behind an association no class is left to take anything
             AstrayRow{"(object Class \"B\")\n  (object Association \"a\"\n roles (list l\n  (object Role \"x\"\n"
                       "   supplier \"B\")\n  (object Role \"y\"\n   supplier \"B\")))\n(object UseCase \"U\"\n"
                       " class_attributes (list l\n  (object ClassAttribute \"z\"))\n abstract TRUE)",
                       "8 UseCase U: dropped use cases are not imported\n"
                       "10 ClassAttribute z: dropped its container is not imported\n"},
             // each attribute is held against the one that it became
             AstrayRow{
                 "(object Class \"A\"\n nestedClasses (list l\n  (object Class \"B\"))\n class_attributes (list l\n"
                 "  (object ClassAttribute \"x\"\n   type \"int\"\n   initv \"1\")))\n(object Class \"A\"\n"
                 " class_attributes (list l\n  (object ClassAttribute \"x\"\n   type \"char\")))",
                 "5 ClassAttribute x: " + std::string(toB) +
                     "8 Class A: changed it was merged into the class of the same name from line 8\n"},
         }) {
        EXPECT_EQ(LedgerText::of(row.elements).exceptions(), row.expected) << row.elements;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Operations, Planted,
    testing::Values(
        Row{"(object Class \"A\"\n operations (list l\n (object Operation \"f\"\n  result \"int\"\n"
            "  opExportControl \"Public\"\n  concurrency \"Sequential\"\n  static TRUE\n  semantics \t(object "
            "Semantic_Info\n   PDL \"p\")\n  parameters (list l\n   (object Parameter \"q\"\n    type \"int\"\n"
            "    initv \"0\")))))",
            ""},
        Row{"(object Class \"A\"\n operations (list l\n (object Operation \"f\"\n  parameters (list l\n"
            "   (object Parameter \"q\"))\n  virtual TRUE\n  stereotype \"s\")))",
            "3 Operation f: changed no type is given; the model has \"int\"\n"
            "5 Parameter q: changed no type is given; the model has \"int\"\n"
            "6 Operation f.virtual: LOST read as a property of the preceding element, which does not have it: \"q\"\n"
            "7 Operation f.stereotype: dropped the model has no place for it\n"},
        Row{"(object Class \"A\"\n parameters (list l\n (object Parameter \"T\")))",
            "3 Parameter T: LOST only template classes have arguments\n"}));

std::string association(const char* head, const char* first, const char* second) {
    return std::string(twoClasses) + "  (object Association \"" + head + "\n roles (list l\n  (object Role \"" + first +
           "\n  (object Role \"" + second + "))";
}

TEST(PlantedRelations, AreTold) {
    struct RelationRow {
        std::string elements;
        const char* expected;
    };
    const std::string inClass = "(object Class \"B\")\n(object Class \"A\"\n superclasses (list l\n ";
    for (const RelationRow& row : {
             RelationRow{association("ab\"",
                                     "a\"\n supplier \"A\"\n client_cardinality \t(value cardinality \"0..n\"))",
                                     "b\"\n supplier \"Logical View::B\"\n is_navigable TRUE)"),
                         ""},
             RelationRow{association("$UNNAMED$0\"", "$UNNAMED$1\"\n supplier \"A\")", "b\"\n supplier \"B\")"),
                         "3 Association $UNNAMED$0: changed the generated name was removed\n"
                         "5 Role $UNNAMED$1: changed the generated name was removed\n"},
             RelationRow{association("ab\"", "a\"\n supplier \"A\"\n is_aggregate TRUE)", "b\"\n supplier \"B\")"),
                         "7 Role a.is_aggregate: changed only the association is marked as an aggregation\n"},
             RelationRow{association("ab\"\n AssociationClass \"Logical View::C\"", "a\"\n supplier \"A\")",
                                     "b\"\n supplier \"B\")"),
                         "4 Association ab.AssociationClass: LOST an association needs two ends\n"},
             RelationRow{std::string(twoClasses) + "  (object Association \"ab\"\n roles (list l\n  (object Role "
                                                   "\"a\"\n supplier \"A\")\n  (object Role \"b\"\n supplier \"B\"))\n"
                                                   " AssociationClass \"Logical View::C\")",
                         "9 Association ab.AssociationClass: changed replaced by two associations with the class C\n"},
             RelationRow{std::string(twoClasses) +
                             "  (object Association \"one\"\n roles (list l\n  (object Role \"a\"\n supplier \"A\")))",
                         "3 Association one: LOST an association needs two ends\n"
                         "5 Role a: LOST an association needs two ends\n"},
             RelationRow{association("ab\"", "a\"\n supplier \"A\")", "b\"\n label \"b\")"),
                         "3 Association ab: LOST an end does not name a class\n"
                         "5 Role a: LOST an end does not name a class\n"
                         "7 Role b: LOST an end does not name a class\n"},
             RelationRow{inClass + "(object Inheritance_Relationship\n  supplier \"B\"\n  label \"is\"\n"
                                   "  stereotype \"s\")))",
                         "7 Inheritance_Relationship.stereotype: dropped the model has no place for it\n"},
             RelationRow{inClass + "(object Inheritance_Relationship\n  label \"none\")))",
                         "4 Inheritance_Relationship: LOST it does not name a class\n"},
             RelationRow{inClass + "(object Inheritance_Relationship\n  supplier \"Unknown\")))",
                         "4 Inheritance_Relationship: LOST its class is not defined anywhere: Unknown\n"},
             RelationRow{inClass + "(object Realize_Relationship\n  supplier \"B\")))", ""},
             RelationRow{inClass + "(object Uses_Relationship\n  supplier \"B\")))", ""},
             // in whatever it stands, a supplier goes to the relationship in front of it, a cardinality to the class
             RelationRow{"(object Class \"T\")\n" + inClass +
                             "(object Inheritance_Relationship\n  supplier \"B\")\n"
                             " (object Instantiation_Relationship\n  supplier \"T\")))",
                         "7 Instantiation_Relationship: dropped instantiations are not imported\n"
                         "8 Instantiation_Relationship.supplier: changed read as part of the preceding element; in the "
                         "model it belongs to the generalization of \"A\"\n"},
             RelationRow{inClass + "(object Uses_Relationship\n  supplier \"B\"\n  client_cardinality \t(value "
                                   "cardinality \"7\"))))",
                         "6 Uses_Relationship.client_cardinality: changed read as part of the preceding element; in "
                         "the model it belongs to \"A\"\n"},
             RelationRow{inClass + "(object Visibility_Relationship\n  supplier \"New\")))",
                         "4 Visibility_Relationship: dropped dependencies between packages are not imported\n"
                         "5 Visibility_Relationship.supplier: changed read as the name of a class, which is added to "
                         "the model: \"New\"\n"},
             RelationRow{inClass + "(object Realize_Relationship\n  supplier \"A\"\n  supplier \"B\")))",
                         "5 Realize_Relationship.supplier: changed overwritten by a later line\n"},
             RelationRow{inClass + "(object Has_Relationship\n  supplier \"B\")))",
                         "4 Has_Relationship: dropped has relationships are not imported\n"},
         }) {
        EXPECT_EQ(LedgerText::of(row.elements).exceptions(), row.expected) << row.elements;
    }
}

TEST(PlantedDiagrams, AreTold) {
    const LedgerText text = LedgerText::of(
        "(object Class \"B\")\n(object Class \"A\"\n superclasses (list l\n"
        " (object Inheritance_Relationship\n  supplier \"B\")))\n",
        "(object ClassDiagram \"D\"\n zoom 100\n items (list l\n"
        "  (object ClassView \"Class\" \"Logical View::A\" @1\n   location (1, 2))\n"
        "  (object ClassView \"Class\" \"Logical View::B\" @2)\n"
        "  (object InheritView \"\" @3\n   client \t@1\n   supplier \t@2)\n"
        "  (object InheritView \"\" @4\n   client \t@2\n   supplier \t@1)\n"
        "  (object InheritView \"\" @5\n   client \t@1\n   supplier \t@9)\n"
        "  (object AssociationViewNew \"n\" @6\n   quidu \"0\")\n"
        "  (object CategoryView \"P\" @7)\n"
        "  (object NoteView @8\n   label \t(object ItemLabel\n    Parent_View \t@8\n    label \t\"alone\"))\n"
        "  (object NoteView @10\n   Parent_View \t@10\n   label \t\"with A\")\n"
        "  (object AttachView \"\" @11\n   client \t@10\n   supplier \t@1)\n"
        "  (object ClassView \"Class\" \"Logical View::A\" @12)))\n"
        "(object UseCaseDiagram \"U\")\n");
    EXPECT_EQ(text.exceptions(), "17 InheritView: LOST the element it shows is not on the model's diagram\n"
                                 "20 InheritView: LOST one of its ends is not a class on the diagram\n"
                                 "23 AssociationViewNew n: LOST the element it shows is not on the model's diagram\n"
                                 "25 CategoryView P: dropped packages on diagrams are not imported\n"
                                 "26 NoteView: LOST only attached notes are imported\n"
                                 "27 ItemLabel: dropped layout is not imported\n"
                                 "36 ClassView Logical View::A: changed the diagram in the model shows it once\n"
                                 "37 UseCaseDiagram U: dropped use cases are not imported\n");
}

std::string note(int number, const char* text) {
    const std::string reference = " @" + std::to_string(number);
    return "(object NoteView" + reference + "\n Parent_View \t" + reference + "\n label \t\"" + text + "\")\n";
}

std::string attachment(int client, int supplier) {
    return "(object AttachView \"\" @90\n client \t@" + std::to_string(client) + "\n supplier \t@" +
           std::to_string(supplier) + ")\n";
}

// Each note of the model stands for one of the file.
TEST(PlantedNotes, AreToldByWhereTheyAre) {
    const std::string shown = "(object ClassDiagram \"D\"\n items (list l\n(object ClassView \"Class\" \"A\" @1)\n";
    const std::string other = "))\n(object ClassDiagram \"E\"\n items (list l\n(object ClassView \"Class\" \"B\" @1)\n";
    const char* unattached = " NoteView: LOST only attached notes are imported\n";
    const char* ofOther = " AttachView: changed the note has the text of another note, from line ";
    struct NoteRow {
        std::string views;
        std::string expected;
    };
    for (const NoteRow& row : {
             NoteRow{note(2, "same") + note(3, "same") + attachment(2, 1) + other + note(3, "same"),
                     std::string("11") + unattached + "21" + unattached},
             NoteRow{note(2, "a") + note(3, "b") + attachment(2, 1) + attachment(3, 1) + attachment(3, 99),
                     "20 AttachView: changed the note is on the diagram, but the element it is attached to is not\n"},
             // the second diagram's note has the number of the first one's, whose text goes to both classes
             NoteRow{note(2, "first") + attachment(2, 1) + other + note(2, "second") + attachment(2, 1),
                     std::string("18") + unattached + "21" + ofOther + "15\n"},
             NoteRow{note(2, "away") + other + note(3, "here") + attachment(1, 2) + attachment(2, 3),
                     std::string("8 NoteView: changed in the model it is in \"E\"\n18") + ofOther + "22\n21" + ofOther +
                         "15\n"},
         }) {
        EXPECT_EQ(LedgerText::of(twoClasses, shown + row.views + "))").exceptions(), row.expected) << row.views;
    }
}

// Views on a diagram that is not imported are drawn on the class diagram in front of it.
TEST(PlantedDiagrams, OfUseCasesGoAstray) {
    const LedgerText text = LedgerText::of(
        twoClasses, "(object ClassDiagram \"B\"\n items (list l\n (object ClassView \"Class\" \"A\" @1)))\n"
                    "(object UseCaseDiagram \"U\"\n items (list l\n (object ClassView \"Class\" \"B\" @1)\n"
                    " (object NoteView @2\n  Parent_View \t@2\n  label \t\"n\")\n"
                    " (object AttachView \"\" @3\n  client \t@2\n  supplier \t@1)\n"
                    " (object ClassView \"Class\" \"Visitor\" @4)))\n"
                    "(object ClassDiagram \"F\"\n items (list l\n (object ClassView \"Class\" \"Visitor\" @1)))\n");
    EXPECT_EQ(text.exceptions(),
              "8 UseCaseDiagram U: dropped use cases are not imported\n10 ClassView B: " + std::string(toB) +
                  "11 NoteView: changed in the model it is in \"A\"\n14 AttachView: changed read as part of the "
                  "preceding element; in the model it belongs to \"A\"\n17 ClassView Visitor: " +
                  toB +
                  "20 ClassView Visitor: changed its class is not defined in the logical view; the model has it in "
                  "the package \"Use Case Classes in Class Diagrams\"\n");
}

TEST(PlantedTexts, ThatAreCutAreTold) {
    const std::string longText(12'000, 'x');
    EXPECT_EQ(LedgerText::of("(object Class \"A\"\n documentation \t\n|" + longText + "\n)").exceptions(),
              "2 Class A.documentation: changed the text was cut after 9999 bytes\n");
    EXPECT_EQ(LedgerText::of("(object Class \"A\"\n documentation \"a\xB7 z\")", "", "windows-936").exceptions(),
              "2 Class A.documentation: changed bytes invalid in the file's encoding were replaced by U+FFFD\n");
}

} // namespace
