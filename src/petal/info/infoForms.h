#pragma once

#include "petal/info/gatherFileInfo.h"
#include "text/IndentedJson.h"

#include <cstdint>

namespace petal {

/// The release of Rose that writes files of this version, for people ("4.0"); null when it is not known.
[[nodiscard]] const char* roseRelease(std::int64_t version);

/// The lines that tell a person of the model file at `path`. They drive no terminal, whatever the file holds.
[[nodiscard]] std::string infoText(const std::string& path, const FileInfo& info);

/// Writes the same as a JSON object. What the file does not say, and what is false or empty, is left out.
void writeInfoJson(const std::string& path, const FileInfo& info, text::IndentedJson& json);

} // namespace petal
