#include "model/Classes.h"

#include "model/ModelWriter.h"
#include "model/ToolProperties.h"

namespace bench {

void beginClass(ModelWriter& writer, std::uint64_t number, unsigned percentOfUuids) {
    writer.text.beginObject("Class", className(number));
    writer.counts.add(Counted::classes);
    uuid(writer, percentOfUuids);
    writer.quid();
}

void endClass(ModelWriter& writer) {
    writer.text.quoted("language", "Java");
    writer.text.end();
}

void emptyClass(ModelWriter& writer, std::uint64_t number) {
    beginClass(writer, number, 63);
    endClass(writer);
}

void enumeration(ModelWriter& writer, std::uint64_t number) {
    writer.text.beginObject("Class", className(number));
    writer.quid();
    writer.text.beginList("attributes", "Attribute_Set");
    writer.text.beginObject("Attribute");
    writer.text.quoted("tool", "DDL");
    writer.text.value("value", "Text", "{Open,Held=4,Closed}");
    writer.text.end();
    writer.text.end();
    writer.text.end();
    writer.counts.add(Counted::declaredTypes);
    writer.counts.add(Counted::typeValues, 3);
}

} // namespace bench
