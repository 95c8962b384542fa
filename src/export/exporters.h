#pragma once

#include "export/options.h"

#include <cstdint>
#include <span>
#include <string_view>

class KelModel;

namespace source {
class SourceMap;
}

namespace text {
class Output;
}

namespace exporter {

/// The files that a format consists of.
enum class Shape : std::uint8_t { nothing, oneFile };

/// All that a format is given to write a model. Owns nothing; lives during one call.
struct ExportContext {
    const KelModel& model;           ///< does not change meanwhile
    const source::SourceMap* source; ///< where the model's objects come from; null: not known
    const OptionValues& options;     ///< of the format's own options
    text::Output& output;
};

/// A form in which models are written: a row of the table that the help, the manual, the completions, `petal formats`,
/// the fuzz targets and the tests go through.
struct Exporter {
    std::string_view format;
    std::string_view description; ///< half a sentence for people
    Shape shape;
    std::span<const std::string_view> endings; ///< of names of files, with the dot; the first is the usual one
    std::span<const Option> options;
    /// Writes the model. Throws what the output throws, and `std::bad_alloc`. Takes time and memory in proportion to
    /// the model. Null for a format that writes nothing, not even an empty file.
    void (*write)(const ExportContext& context);
    /// Whether it is given where the objects come from; null for never. That costs reading the files once more.
    bool (*needsSource)(const OptionValues& options) = nullptr;
};

/// Every form.
[[nodiscard]] std::span<const Exporter> exporters();
/// The form of that name, or null.
[[nodiscard]] const Exporter* findExporter(std::string_view format);
/// The form that a file of that path is in, judged by the ending of its name in any case; null when no form has it.
[[nodiscard]] const Exporter* findExporterByEnding(std::string_view path);

} // namespace exporter
