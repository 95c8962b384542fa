#pragma once

#include <span>
#include <string_view>

class KelModel;

namespace text {
class Output;
}

namespace exporter {

/// A form in which models are written.
struct Exporter {
    std::string_view format;
    std::string_view description; // half a sentence for people
    void (*write)(const KelModel& model,
                  text::Output& output); // null: the format writes nothing, not even an empty file
};

/// Every form.
[[nodiscard]] std::span<const Exporter> exporters();
/// The form of that name, or null.
[[nodiscard]] const Exporter* findExporter(std::string_view format);

} // namespace exporter
