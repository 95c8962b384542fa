#pragma once

#include "export/Omissions.h"
#include "export/exporters.h"
#include "text/MemoryOutput.h"

#include <string>
#include <string_view>
#include <vector>

/// One output under whatever name.
class FolderOfOne final : public exporter::OutputFolder {
public:
    explicit FolderOfOne(text::Output& output) : output_(output) {}
    [[nodiscard]] text::Output& open(std::string_view /*name*/) override { return output_; }

private:
    text::Output& output_;
};

/// Writes the model in a format, with settings of its options such as "places=true".
inline void writeAs(std::string_view format, const KelModel& model, text::Output& output,
                    const std::vector<std::string>& settings = {}, const source::SourceMap* source = nullptr) {
    const exporter::Exporter& exporter = *exporter::findExporter(format);
    const exporter::OptionValues options(exporter.options, settings);
    FolderOfOne folder(output);
    exporter::Omissions omissions;
    exporter.write({.model = model, .source = source, .options = options, .folder = folder, .omissions = omissions});
}

inline std::string writtenAs(std::string_view format, const KelModel& model,
                             const std::vector<std::string>& settings = {}, const source::SourceMap* source = nullptr) {
    MemoryOutput output;
    writeAs(format, model, output, settings, source);
    return output.text;
}
