#include "model/Packages.h"

#include "model/ModelWriter.h"
#include "model/ToolProperties.h"

namespace bench {

void beginPackage(ModelWriter& writer, std::uint64_t number) {
    writer.text.beginObject("Class_Category", packageName(number));
    uuid(writer, 80);
    writer.quid();
    writer.text.quoted("exportControl", "Public");
    writer.text.beginList("logical_models", "unit_reference_list");
    writer.counts.add(Counted::packages);
}

void beginDiagrams(ModelWriter& writer) {
    writer.text.end();
    writer.text.beginList("logical_presentations", "unit_reference_list");
}

void endPackage(ModelWriter& writer) {
    writer.text.end();
    writer.text.end();
}

} // namespace bench
