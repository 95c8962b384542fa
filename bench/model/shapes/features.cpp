#include "model/Features.h"

#include "model/Classes.h"
#include "model/ModelWriter.h"
#include "model/Names.h"
#include "model/shapes/shapeFunctions.h"

namespace bench {

namespace {

constexpr std::uint64_t attributesPerClass = 20;

} // namespace

void attributesOfOneClass(ModelWriter& writer) {
    beginClass(writer, writer.nextClass++);
    writer.text.beginList("class_attributes", "class_attribute_list");
    while (writer.wantsMore(writer.nextFeature)) {
        attribute(writer, featureName(writer.nextFeature++), anyType(writer));
    }
    writer.text.end();
    endClass(writer);
}

void distinctTypes(ModelWriter& writer) {
    while (writer.wantsMore(writer.nextFeature)) {
        beginClass(writer, writer.nextClass++);
        writer.text.beginList("class_attributes", "class_attribute_list");
        for (std::uint64_t count = 0; count != attributesPerClass; ++count) {
            const std::uint64_t number = writer.nextFeature++;
            attribute(writer, featureName(number), typeName(number));
            writer.counts.add(Counted::declaredTypes);
        }
        writer.text.end();
        endClass(writer);
    }
}

} // namespace bench
