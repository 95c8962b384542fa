#include "model/Diagrams.h"

#include "model/Associations.h"
#include "model/Classes.h"
#include "model/ModelWriter.h"
#include "model/Names.h"
#include "model/Packages.h"
#include "model/Relationships.h"
#include "model/shapes/shapeFunctions.h"

namespace bench {

namespace {

constexpr std::uint64_t diagramsOfEach = 10;

std::string qualified(std::uint64_t number) {
    return "Logical View::" + packageName(0) + "::" + className(number);
}

void associate(ModelWriter& writer, std::uint64_t number, std::uint64_t first, std::uint64_t second) {
    association(writer, number, {.name = "source", .supplier = qualified(first), .cardinality = "0..n"},
                {.name = "target", .supplier = qualified(second), .cardinality = "1"});
}

} // namespace

void diagrams(ModelWriter& writer) {
    constexpr std::uint64_t classes = 3;
    beginPackage(writer, writer.nextPackage++);
    for (std::uint64_t number = 0; number != classes; ++number) {
        emptyClass(writer, number);
    }
    beginDiagrams(writer);
    for (std::uint64_t number = 0; writer.wantsMore(number); ++number) {
        beginDiagram(writer, featureName(number));
        for (std::uint64_t drawn = 0; drawn != classes; ++drawn) {
            classView(writer, qualified(drawn));
        }
        endDiagram(writer);
    }
    endPackage(writer);
}

void viewsOfOneDiagram(ModelWriter& writer) {
    constexpr double shareOfClasses = 0.27;
    beginPackage(writer, writer.nextPackage++);
    emptyClass(writer, writer.nextClass++);
    while (writer.wantsMore(2 * writer.nextClass - 1, shareOfClasses)) { // all but the first are drawn with a line
        beginClass(writer, writer.nextClass, 35);
        relationship(writer, RelationshipKind::generalization, qualified(writer.nextClass - 1));
        endClass(writer);
        ++writer.nextClass;
    }
    beginDiagrams(writer);
    beginDiagram(writer, "Main");
    const std::uint64_t firstView = writer.nextView;
    for (std::uint64_t number = 0; number != writer.nextClass; ++number) {
        classView(writer, qualified(number));
    }
    for (std::uint64_t number = 1; number != writer.nextClass; ++number) {
        relationshipView(writer, RelationshipKind::generalization, firstView + number, firstView + number - 1);
    }
    endDiagram(writer);
    endPackage(writer);
}

void associationsOnTenDiagrams(ModelWriter& writer) {
    constexpr double shareOfAssociations = 0.49;
    beginPackage(writer, writer.nextPackage++);
    emptyClass(writer, 0);
    emptyClass(writer, 1);
    do {
        associate(writer, writer.nextAssociation++, 0, 1);
    } while (writer.wantsMore(writer.nextAssociation, shareOfAssociations));
    beginDiagrams(writer);
    for (std::uint64_t diagram = 0; diagram != diagramsOfEach; ++diagram) {
        beginDiagram(writer, featureName(diagram));
        classView(writer, qualified(0));
        classView(writer, qualified(1));
        for (std::uint64_t number = 0; number != writer.nextAssociation; ++number) {
            leanAssociationView(writer, number);
        }
        endDiagram(writer);
    }
    endPackage(writer);
}

void forwardReferences(ModelWriter& writer) {
    constexpr double shareOfReferences = 0.63;
    beginPackage(writer, writer.nextPackage++);
    do {
        const std::uint64_t number = writer.nextAssociation++;
        associate(writer, number, number * 2, number * 2 + 1);
    } while (writer.wantsMore(2 * writer.nextAssociation, shareOfReferences));
    for (; writer.nextClass != writer.nextAssociation * 2; ++writer.nextClass) {
        emptyClass(writer, writer.nextClass);
    }
    beginDiagrams(writer);
    endPackage(writer);
}

} // namespace bench
