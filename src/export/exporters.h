#pragma once

#include "export/Exporter.h"

#include <span>
#include <string>
#include <string_view>

namespace exporter {

/// Every format. Lives as long as the program.
[[nodiscard]] std::span<const Exporter> exporters();
/// The format of that name, or null.
[[nodiscard]] const Exporter* findExporter(std::string_view format);
/// The ending of the file name in `path`, with the dot and in lower case; empty without one.
[[nodiscard]] std::string endingOf(std::string_view path);
/// The format that the ending of the file name in `path` stands for, in any case; null if there is none.
[[nodiscard]] const Exporter* findExporterByEnding(std::string_view path);

} // namespace exporter
