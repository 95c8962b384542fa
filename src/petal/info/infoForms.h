#pragma once

#include "petal/info/gatherFileInfo.h"
#include "text/IndentedJson.h"

#include <cstdint>

namespace petal {

/// The release of Rose that writes files of this version, for people ("4.0"); null if it is unknown.
[[nodiscard]] const char* roseRelease(std::int64_t version);

/// Describes the model file at `path` for people, in lines without control characters.
[[nodiscard]] std::string infoText(const std::string& path, const FileInfo& info);

/// Writes the same as a JSON object, without false, empty and missing values. Throws what the output throws.
void writeInfoJson(const std::string& path, const FileInfo& info, text::IndentedJson& json);

} // namespace petal
