#pragma once

#include "petal/info/FileInfo.h"
#include "text/IndentedJson.h"

namespace petal {

/// The lines that tell a person of the model file at `path`. They drive no terminal, whatever the file holds.
[[nodiscard]] std::string infoText(const std::string& path, const FileInfo& info);

/// Writes the same as a JSON object. What the file does not say, and what is false or empty, is left out.
void writeInfoJson(const std::string& path, const FileInfo& info, text::IndentedJson& json);

} // namespace petal
