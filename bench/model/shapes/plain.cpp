// The ordinary model. Packages of a few classes, in groups of one and two within it; in each the classes are tied
// to each other, and now and then to one far away, and are drawn on two diagrams.

#include "model/Associations.h"
#include "model/Classes.h"
#include "model/Diagrams.h"
#include "model/Features.h"
#include "model/ModelWriter.h"
#include "model/Names.h"
#include "model/Packages.h"
#include "model/Relationships.h"
#include "model/shapes/shapeFunctions.h"

#include <optional>

namespace bench {

namespace {

constexpr std::uint64_t classesPerPackage = 8;
constexpr std::uint64_t packagesPerGroup = 3;
constexpr std::uint64_t enumerationPlace = classesPerPackage - 1; // the last of a package, in the first of a group

std::string path(std::uint64_t number) {
    const std::uint64_t package = number / classesPerPackage;
    const std::uint64_t outer = package - package % packagesPerGroup;
    std::string text = "Logical View::" + packageName(outer) + "::";
    if (package != outer) {
        text += packageName(package) + "::";
    }
    return text + className(number);
}

bool isEnumeration(std::uint64_t number) {
    return number % (classesPerPackage * packagesPerGroup) == enumerationPlace;
}

/// Which class of its own package a class is tied to, and how.
struct Tie {
    RelationshipKind kind;
    std::uint64_t supplier;
};

std::optional<Tie> tieOf(std::uint64_t number) {
    const std::uint64_t first = number - number % classesPerPackage;
    switch (number - first) {
    case 1:
        return Tie{RelationshipKind::realization, first};
    case 3:
    case 5:
        return Tie{RelationshipKind::generalization, number - 1};
    case 6:
        return Tie{RelationshipKind::dependency, first + 2};
    default:
        return std::nullopt;
    }
}

/// A class that is not an enumeration and was written before that one.
std::uint64_t earlierClass(ModelWriter& writer, std::uint64_t number) {
    const std::uint64_t first = number - number % classesPerPackage;
    return first == 0 ? 0 : writer.random.below(first / classesPerPackage) * classesPerPackage;
}

void operations(ModelWriter& writer) {
    if (!writer.random.chance(20)) {
        return;
    }
    writer.text.beginList("operations", "Operations");
    for (std::uint64_t count = 1 + writer.random.below(3); count != 0; --count) {
        operation(writer, featureName(writer.nextFeature++), writer.random.chance(25) ? 1 + writer.random.below(2) : 0);
    }
    writer.text.end();
}

void attributes(ModelWriter& writer, std::uint64_t number) {
    const bool isFirst = number % (classesPerPackage * packagesPerGroup) == 0;
    const std::uint64_t others = writer.random.below(4);
    if (!isFirst && others == 0) {
        return;
    }
    writer.text.beginList("class_attributes", "class_attribute_list");
    if (isFirst) {
        attribute(writer, "state", className(number + enumerationPlace)); // the enumeration is still to come
    }
    for (std::uint64_t count = 0; count != others; ++count) {
        attribute(writer, featureName(writer.nextFeature++), writer.random.chance(90) ? anyType(writer) : "");
    }
    writer.text.end();
}

void fullClass(ModelWriter& writer, std::uint64_t number) {
    beginClass(writer, number, 10);
    if (writer.random.chance(10)) {
        writer.documentation(writer.random.chance(70) ? 60 : 400);
    }
    if (number % classesPerPackage == 0) {
        writer.text.quoted("stereotype", "Interface");
    }
    if (const std::optional<Tie> tie = tieOf(number)) {
        relationship(writer, tie->kind, path(tie->supplier));
    } else if (writer.random.chance(15)) {
        relationship(writer, RelationshipKind::dependency, path(earlierClass(writer, number)));
    }
    operations(writer);
    attributes(writer, number);
    endClass(writer);
}

/// Ties each class of the package to the next one, and the last but one to the first of all classes.
void associations(ModelWriter& writer, std::uint64_t first) {
    for (std::uint64_t number = first; number + 2 != first + classesPerPackage; ++number) {
        const bool isLast = number + 3 == first + classesPerPackage;
        association(writer, writer.nextAssociation++,
                    {.name = featureName(number), .supplier = path(number), .cardinality = "0..n"},
                    {.name = "$UNNAMED$1",
                     .supplier = path(isLast ? 0 : number + 1),
                     .cardinality = "1",
                     .isNavigable = false,
                     .isAggregate = number % 3 == 0});
    }
}

void diagram(ModelWriter& writer, std::uint64_t first, std::uint64_t firstAssociation) {
    beginDiagram(writer, packageName(first / classesPerPackage));
    const std::uint64_t firstView = writer.nextView;
    for (std::uint64_t place = 0; place != enumerationPlace; ++place) {
        classView(writer, path(first + place));
    }
    for (std::uint64_t place = 0; place + 3 != classesPerPackage; ++place) {
        associationView(writer, firstAssociation + place, firstView + place, firstView + place + 1);
    }
    for (std::uint64_t number = first; number != first + enumerationPlace; ++number) {
        if (const std::optional<Tie> tie = tieOf(number)) {
            relationshipView(writer, tie->kind, firstView + number - first, firstView + tie->supplier - first);
        }
    }
    noteOn(writer, firstView);
    endDiagram(writer);
}

void contents(ModelWriter& writer, bool hasInnerPackages);

void package(ModelWriter& writer, bool hasInnerPackages) {
    beginPackage(writer, writer.nextPackage++);
    contents(writer, hasInnerPackages);
    endPackage(writer);
}

void contents(ModelWriter& writer, bool hasInnerPackages) {
    const std::uint64_t first = writer.nextClass;
    const std::uint64_t firstAssociation = writer.nextAssociation;
    for (; writer.nextClass != first + classesPerPackage; ++writer.nextClass) {
        (isEnumeration(writer.nextClass) ? enumeration : fullClass)(writer, writer.nextClass);
    }
    associations(writer, first);
    for (std::uint64_t inner = 1; hasInnerPackages && inner != packagesPerGroup && writer.wantsMore(writer.nextClass);
         ++inner) {
        package(writer, false);
    }
    beginDiagrams(writer);
    diagram(writer, first, firstAssociation);
    diagram(writer, first, firstAssociation);
}

} // namespace

void plain(ModelWriter& writer) {
    while (writer.wantsMore(writer.nextClass)) {
        package(writer, true);
    }
}

} // namespace bench
