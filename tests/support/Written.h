#pragma once

#include "export/Omissions.h"
#include "export/exporters.h"
#include "support/keepDocument.h"
#include "text/Output.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// Keeps what is written, and fails at the write number `failAt` (from 0).
class MemoryOutput final : public text::Output {
public:
    explicit MemoryOutput(std::size_t failAt = static_cast<std::size_t>(-1)) : failAt_(failAt) {}

    void write(std::string_view bytes) override {
        if (writes++ == failAt_) {
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
        }
        text += bytes;
        longestWrite = std::max(longestWrite, bytes.size());
    }

    std::string text;
    std::size_t writes = 0;
    std::size_t longestWrite = 0;

private:
    std::size_t failAt_;
};

/// One output under whatever name.
class FolderOfOne final : public exporter::OutputFolder {
public:
    explicit FolderOfOne(text::Output& output) : output_(output) {}
    [[nodiscard]] text::Output& open(std::string_view /*name*/) override { return output_; }
    [[nodiscard]] text::Output& openBeside() override { return beside; }

    MemoryOutput beside;

private:
    text::Output& output_;
};

/// Writes the model in a format, with settings of its options such as "places=true".
inline void writeAs(std::string_view format, const KelModel& model, text::Output& output,
                    const std::vector<std::string>& settings = {}, const source::SourceMap* source = nullptr,
                    std::string_view ending = "") {
    const exporter::Exporter& exporter = *exporter::findExporter(format);
    const exporter::OptionValues options(exporter.options, settings);
    FolderOfOne folder(output);
    exporter::Omissions omissions;
    exporter.write({.model = model,
                    .findSource = [source] { return source; },
                    .options = options,
                    .folder = folder,
                    .omissions = omissions,
                    .ending = ending});
}

inline std::string writtenAs(std::string_view format, const KelModel& model,
                             const std::vector<std::string>& settings = {}, const source::SourceMap* source = nullptr,
                             std::string_view ending = "") {
    MemoryOutput output;
    writeAs(format, model, output, settings, source, ending);
    keepDocument(output.text);
    return output.text;
}
