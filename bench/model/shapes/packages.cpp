#include "model/Packages.h"

#include "model/Classes.h"
#include "model/ModelWriter.h"
#include "model/shapes/shapeFunctions.h"

namespace bench {

namespace {

void package(ModelWriter& writer, unsigned depth) {
    beginPackage(writer, writer.nextPackage++);
    emptyClass(writer, writer.nextClass++);
    if (depth != 1) {
        package(writer, depth - 1);
    }
    beginDiagrams(writer);
    endPackage(writer);
}

} // namespace

void packagesFlat(ModelWriter& writer) {
    beginPackage(writer, writer.nextPackage++);
    while (writer.wantsMore(writer.nextClass)) {
        emptyClass(writer, writer.nextClass++);
    }
    beginDiagrams(writer);
    endPackage(writer);
}

void packagesNested(ModelWriter& writer) {
    while (writer.wantsMore(writer.nextPackage)) {
        package(writer, 3);
    }
}

} // namespace bench
