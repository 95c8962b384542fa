#include "ScannedModel.h"
#include "host/model/KelClass.h"
#include "scanner/RuleTable.h"
#include "scanner/Scanner.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <set>

namespace rose::test {
namespace {

/// What stands before a line, so that its rule has something to act on.
const std::string package = "(object Class_Category \"Logical View\"\n";
const std::string classA = package + "(object Class \"A\"\n";
const std::string attribute = classA + "(object ClassAttribute \"a\"\n";
const std::string note = " NoteView @3\n";
const std::string operation = classA + "(object Operation \"f\"\n";
const std::string argument = operation + " (object Parameter \"p\"\n";
const std::string general = classA + "(object Inheritance_Relationship\n";
const std::string association = package + " (object Association \"R\"\n";
const std::string role = association + " (object Role \"r\"\n";
const std::string roles = role + " (object Role \"s\"\n";
const std::string boundRoles = classA + " (object Association \"R\"\n (object Role \"r\"\n supplier \"A\"\n"
                                        " (object Role \"s\"\n supplier \"A\"\n";
const std::string realization = classA + "(object Realize_Relationship\n";
const std::string diagram = classA + "(object ClassDiagram \"D\"\n";
/// Two associations that have not been read, on a diagram.
const std::string waiting = diagram + "(object AssociationViewNew \"\"\n\tquidu \"4\"\n"
                                      "(object AssociationViewNew \"\"\n\tquidu \"1\"\n\tParent_View @7\n";
/// An association class ends an operation, while a view keeps both the association and the class current.
const std::string classOfAnEarlierOperation =
    classA + " (object Association \"R\"\n\tquid \"1\"\n (object Role \"r\"\n supplier \"A\"\n"
             " (object Role \"s\"\n supplier \"A\"\n(object ClassDiagram \"D\"\n(object AssociationViewNew "
             "\"R\"\n\tquidu \"1\"\n"
             "(object ClassView \"Class\" \"A\" @1\n(object Operation \"f\"\n\tAssociationClass \"A\"\n";

struct EffectRow {
    int rule;
    std::string setup;
    std::string line;
    std::string change; // in the builder's state
};

// A row in which each rule acts, and the effects that no outline shows: current objects, flags, view numbers.
const EffectRow effects[] = {
    {1, package, "\tlogical_presentations (list\n", "package.toolId=-1"},
    {2, classA, "\tabstract TRUE\n", "class.isAbstract=1"},
    {2, classA, "\tabstract FALSE\n", ""},
    {3, package, "(object AttachView \"\" @1\n", "attachNote=1"},
    {4, package, "(object Label @2\n", "diagramDescription=1"},
    {5, classA, "\tspace \" -12x\"\n", "class.space=-12"},
    {6, package, "(object SubSystem \"x\"\n", "objectMechanism=1"},
    {7, package, "(object Mechanism @1\n", "objectMechanism=1"},
    {8, package, "(object State_Diagram \"x\"\n", "objectMechanism=1"},
    {9, package, "(object State_Machine\n", "objectMechanism=1"},
    {10, package, "(object InheritView \"\" @1\n", "InGeneralizationView=1"},
    {11, package, "(object RealizeView \"\" @1\n", "InRealizationView=1 -active"},
    {12, package, "(object UsesView \"\" @1\n", "InUsesView=1 -active"},
    {13, classA, "\tstereotype \"entity\"\n", "class.stereotype=entity"},
    {13, classA + note, "\tstereotype \"s\"\n", "class.stereotype=s -InNoteView"},
    {13, attribute + note, "\tstereotype \"kept nowhere\"\n", "-InNoteView"},
    {14, classA, "\t(value Text \"{red=1,green}\")\n", "types=1 -active -class -class.categoryType -package.elements"},
    {15, classA, "\tpersistence \"Transient\"\n", "class.isPersistent=1"},
    {16, operation, "\tfriend FALSE)\n", "operation.isFriend=1"},
    {17, operation, "\tstatic FALSE\n", "operation.isStatic=1"},
    {18, attribute, "\tderived TRUE\n", "attribute.isDerived=1"},
    {19, operation, "\tvirtual TRUE\n", "operation.isVirtual=1"},
    {20, "", "(object Class_Category\"Logical View\"\n",
     "active=9:Logical View package=9:Logical View package.toolId=1"},
    {21, package, "(object ClassDiagram \"D\"\n", "active=11:D diagram=11:D"},
    {21, general + note, "(object ClassDiagram \"D\"\n", "active=11:D diagram=11:D -InNoteView -general"},
    {21, realization, "(object ClassDiagram \"D\"\n", "active=11:D diagram=11:D -realization"},
    {21, classA + "(object Uses_Relationship\n", "(object ClassDiagram \"D\"\n",
     "active=11:D diagram=11:D -dependency"},
    {21, association, "(object ClassDiagram \"D\"\n", "active=11:D diagram=11:D -association"},
    {22, diagram + note, "(object ClassView \"Class\" \"A\" @4294967298\n",
     "active=13:A class.toolId=2 diagram.elements=1 -InNoteView"},
    {22, diagram, "(object ClassView \"Class\" \"Logical View::New\" @-3\n",
     "active=13:New class=13:New class.toolId=-3 diagram.elements=1 waitingClasses=1"},
    {22, diagram + "(object ClassView \"Class\" \"New\" @1\n", "(object ClassView \"Class\" \"New\" @2\n",
     "class.toolId=2"},
    {22, diagram + "(object AssociationViewNew \"R\"\n", "(object ClassView \"Class\" A @12\n", "-InAssociationView"},
    {23, package, "\tcompartment (object Compartment\n", "InCompartment=1"},
    {24, roles, "\tis_aggregate TRUE\n", "association.isAggregation=1 role.isAggregate=1 s.isAggregate=1"},
    {25, package, "(object Parameterized_Class \"A\"\n",
     "active=13:A class=13:A class.categoryType=2 package.elements=1"},
    {26, package, "(object Parameterized_Class_Utility \"A\"\n",
     "active=13:A class=13:A class.categoryType=5 package.elements=1"},
    {27, package, "(object Instantiated_Class_Utility \"A\"\n",
     "active=13:A class=13:A class.categoryType=6 package.elements=1"},
    {28, package, "(object Instantiated_Class \"A\"\n",
     "active=13:A class=13:A class.categoryType=3 package.elements=1"},
    {29, package, "(object Class_Utility \"A\"\n", "active=13:A class=13:A class.categoryType=4 package.elements=1"},
    {30, package, "(object Class \"A\"\n", "active=13:A class=13:A class.categoryType=1 package.elements=1"},
    {30, roles + " keys\n" + note + "(object AttachView \"\"\n", "(object Class \"Logical View::P::A\"\n",
     "active=13:A class=13:A class.categoryType=1 package.elements=2 -InNoteView -InQualifier -association "
     "-attachNote"},
    {31, package, "(object Metaclass \"A\"\n", "active=13:A class=13:A class.categoryType=8 package.elements=1"},
    {32, classA, "(object Inheritance_Relationship\n", "active=16: general=16: package.elements=2"},
    {33, classA, "\tdocumentation \"text\"\n", "class.description=text"},
    {33, classA + " NoteView @1\n", "\tdocumentation \"note\"\n", "notes=1"},
    {34, general, "\tlabel \"text\"\n", "active=16:text general=16:text"},
    {34, diagram + "(object Label @1\n\tlabel \"old\"\n(object Label @2\n", "\tlabel \n|new\n",
     "diagram.description=newold -diagramDescription"},
    {35, package + "(object Label @1\n", "\t(object NoteView @1\n", "InNoteView=1 -diagramDescription"},
    {36, attribute + note, "(object ClassAttribute \"A\"\n",
     "active=14:A attribute=14:A attribute.position=1 -InNoteView"},
    {36, attribute + "(object ClassAttribute \"b\"\n", "(object ClassAttribute \"a\"\n",
     "active=14:a attribute=14:a -attribute.of"}, // refused
    {36, boundRoles + " keys\n", "(object ClassAttribute \"a\"\n",
     "active=14:a attribute=14:a attribute.containment=2 attribute.of=13:A attribute.visibility=2 key=21:a "
     "key.userDefined=1"},
    {37, attribute, "\ttype \"int\"\n", "attribute.type=5:int type=5:int types=1"},
    {37, attribute + "(object Operation \"f\"\n", "\ttype \"received by nothing\"\n",
     "type=5:received by nothing types=1"},
    {38, attribute, "\tinitv \"1\"\n", "attribute.initialValue=1"},
    {38, argument + "(object ClassAttribute \"a\"\n (object Parameter \"q\"\n", "\tinitv \"1\"\n",
     "argument.initialValue=1"},
    {39, attribute, "\texportControl \"public\"\n", "attribute.visibility=3"},
    {40, role, "\tContainment \"By Reference\"\n", "role.containment=1"},
    {40, role + "\tContainment \"By Value\"\n", "\tContainment \"odd\"\n", "role.containment=2"},
    {41, classA + note, "(object Operation \"f\"\n", "active=23:f operation=23:f -InNoteView"},
    {42, operation, "\tconcurrency \"guarded\"\n", "operation.concurrency=3"},
    {42, classOfAnEarlierOperation, "\tconcurrency \"Sequential\"\n", "class.concurrency=3"},
    {42, classOfAnEarlierOperation + "\tconcurrency \"guarded\"\n", "\tconcurrency \"Seqtial\"\n",
     "-class.concurrency"},
    {43, operation, "\tpost_condition (object\n", "post=1"},
    {44, operation, "\tpre_condition (object\n", "pre=1"},
    {45, operation, "\tsemantics (object\n", "sem=1"},
    {46, operation + "semantics\npost_condition\npre_condition\n", "\tPDL \"text\"\n",
     "operation.precondition=text -pre"},
    {46, operation + "semantics\n", "\tPDL \"text\"\n", "operation.semantics=text -sem"},
    {47, operation, "\topExportControl \"Private\"\n", "operation.visibility=2"},
    {48, operation, "\tresult \"Logical View::T\"\n",
     "operation.returns=5:Logical View::T type=5:Logical View::T types=1"},
    {49, argument + note, "\t(object Parameter \"Logical View::$UNNAMED$\"\n",
     "active=24:Logical View::$UNNAMED$ argument=24:Logical View::$UNNAMED$ argument.position=1 -InNoteView"},
    {50, diagram, "(object AssociationViewNew \"R\" @3\n", "InAssociationView=1 active=17:R association=17:R"},
    {51, package, "\t(object Association \"R\"\n", "active=17:R association=17:R package.elements=1"},
    {52, package, "\t(object RoleView \"\" @1\n", "InAssociationRoleView=1"},
    {53, association, "\t(object Role \"r\"\n", "active=18:r role=18:r role.containment=2"},
    {54, classA + note, "\tParent_View @7\n", "noteId=7"},
    {54, waiting + "(object RoleView \"\" @8\n", "\tParent_View @9\n", "association.toolId=9"},
    {54, diagram + "(object UsesView \"\" @4\n", "\tParent_View @7\n", "physicalId=7"},
    {54, classA + "\tcompartment \n" + note, "\tParent_View @7\n", "-InCompartment"},
    {55, package, "\tclient @12\n", "client=12"},
    {56, classA + role.substr(package.size()), "\tsupplier \"Logical View::A\"\n", "role.class=13:A"},
    {56, package + "(object InheritView \n(object RealizeView \n(object UsesView \n\t(object RoleView \n",
     "\tsupplier none\n", "-InAssociationRoleView -InGeneralizationView -InRealizationView -InUsesView"},
    {57, role, "\tclient_cardinality (value cardinality \"1..n\")\n", "role.multiplicity=1..*"},
    {58, role, "\tis_navigable TRUE\n", "role.isNavigable=1"},
    {59, boundRoles, "\tAssociationClass \"A\"\n", "package.elements=4"},
    {60, association, "\tquid \"1\"\n", "association.quid=1"},
    {60, waiting + " (object Association \"R\"\n", "\tquid \"1\"\n",
     "association.quid=1 association.toolId=7 waitingAssociations=1"},
    {61, association + "\tquid \"1\"\n(object ClassDiagram \"D\"\n(object AssociationViewNew \"R\"\n",
     "\tquidu \"1\"\n", "association.quid=1 diagram.elements=1 -InAssociationView"},
    {61, association + "\tquid \"1\"\n(object AssociationViewNew \"R\"\n", "\tquidu \"1\"\n", ""},
    {61, diagram + "(object UsesView \n\tParent_View @5\n(object AssociationViewNew \"R\"\n", "\tquidu \"1\"\n",
     "association.quid=1 association.toolId=5 diagram.elements=1 waitingAssociations=1 -InAssociationView -physicalId"},
    {61, diagram + "(object AssociationViewNew \"R\"\n\tquid \"old\"\n", "\tquidu \"new\"\n",
     "association.quid=new diagram.elements=1 waitingAssociations=1 -InAssociationView"},
    {62, role, "\tkeys (list\n", "InQualifier=1"},
    {63, classA, "\t(object Realize_Relationship\n", "active=41: package.elements=2 realization=41:"},
    {64, classA, "\t(object Uses_Relationship\n", "active=40: dependency=40: package.elements=2"},
};

TEST(Dispatch, ActsOnTheBuilder) {
    std::set<int> acting;
    for (const EffectRow& row : effects) {
        const ScannedModel model;
        ScannedModel::scan(row.setup);
        const std::string change = ScannedModel::change(row.line);
        EXPECT_EQ(change, row.change) << "rule " << row.rule << ": " << row.line;
        if (!change.empty()) {
            acting.insert(row.rule);
        }
    }
    EXPECT_EQ(acting.size(), rules.size()) << "a rule has no row in which it acts";
}

/// The rules whose lines still change something after `guard` has been set up.
std::set<int> actingBehind(void (*guard)()) {
    std::set<int> acting;
    for (const EffectRow& row : effects) {
        const ScannedModel model;
        ScannedModel::scan(row.setup);
        guard();
        if (!row.change.empty() && !ScannedModel::change(row.line).empty()) {
            acting.insert(row.rule);
        }
    }
    return acting;
}

TEST(Dispatch, ActsWithoutAPackageByFewRules) {
    const auto leavePackage = [] {
        state.aPackage = nullptr;
        state.InUseCaseView = 1; // lets a closed package be seen
    };
    EXPECT_EQ(actingBehind(leavePackage), (std::set{1, 6, 7, 8, 9, 13, 20}));
}

TEST(Dispatch, ActsInsideAMechanismByFewRules) {
    // Rules 6 to 9 act too, but have nothing left to change.
    EXPECT_EQ(actingBehind([] { state.objectMechanism = true; }),
              (std::set{1, 16, 20, 21, 23, 25, 26, 27, 28, 29, 30, 31, 51}));
}

TEST(Dispatch, LeavesTheMechanismEvenWithoutAValue) {
    for (const char* line :
         {"(object Class_Category", "(object ClassDiagram x", "(object Class x", "\t(object Association x"}) {
        const ScannedModel model;
        ScannedModel::scan(package + "(object Mechanism @1\n");
        EXPECT_EQ(ScannedModel::change(line), "-objectMechanism") << line;
    }
}

TEST(DispatchDeath, EndsTheProcessOverARuleThatIsNotThere) {
    const auto exitsWithTwo = testing::ExitedWithCode(2);
    const char* const message = "^fatal flex scanner internal error--no action found\n$";
    EXPECT_EXIT(dispatch(0), exitsWithTwo, message);
    EXPECT_EXIT(dispatch(65), exitsWithTwo, message);
}

/// A log that cannot take anything.
class BrokenLog final : public KelLog {
    void record(const KelLogEvent&) override { throw 1; }
};

std::string currentClass() {
    return state.aClass != nullptr ? state.aClass->getName().text() : "";
}

TEST(RoseLexImport, ScansFromWhereTheStreamStandsToItsEnd) {
    const ScannedModel model;
    const std::string text = "(object Class_Category \"Use Case View\"\n" + package + "(object Class \"A\"\n";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::tmpfile(), &std::fclose);
    std::fwrite(text.data(), 1, text.size(), stream.get());
    std::fseek(stream.get(), 20, SEEK_SET);
    EXPECT_TRUE(RoseLexImport(stream.get()));
    EXPECT_EQ(currentClass(), "A");
    EXPECT_EQ(std::ftell(stream.get()), static_cast<long>(text.size()));
}

TEST(RoseLexImport, StartsAfreshAfterAScanThatWasCutShort) {
    for (const std::size_t length : {std::size_t{0}, std::size_t{30}, std::size_t{100'000}}) {
        const ScannedModel model;
        ScannedModel::scan(package);
        KelLog* const log = state.localLog;
        BrokenLog broken;
        state.localLog = &broken;
        const std::string tail(length, 'x');
        EXPECT_THROW(ScannedModel::scan("(object Class \"A\"" + tail + "\n(object Class \"Left\"\n"), int);
        state.localLog = log;
        state.aClass = nullptr;
        ScannedModel::scan("");
        EXPECT_EQ(currentClass(), "") << "something was left over";
        ScannedModel::scan("(object Class \"B\"\n");
        EXPECT_EQ(currentClass(), "B");
    }
}

} // namespace
} // namespace rose::test
