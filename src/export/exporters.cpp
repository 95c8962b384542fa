#include "export/exporters.h"

#include "export/JsonWriter.h"
#include "export/TreeWriter.h"

#include <algorithm>
#include <array>

namespace exporter {

namespace {

template <class Writer>
void writeWith(const KelModel& model, text::Output& output) {
    Writer(output).write(model);
}

constexpr std::array table{
    Exporter{"json", "the whole model as a JSON document for programs", writeWith<JsonWriter>},
    Exporter{"tree", "an outline for people", writeWith<TreeWriter>},
    Exporter{"none", "no model: only import and report", nullptr},
};

} // namespace

std::span<const Exporter> exporters() {
    return table;
}

const Exporter* findExporter(std::string_view format) {
    const auto* found = std::ranges::find(table, format, &Exporter::format);
    return found != table.end() ? found : nullptr;
}

} // namespace exporter
