#pragma once

#include "export/Exporter.h"
#include "petal/Failure.h"
#include "petal/Request.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace petal {

/// The destinations of a single model: one for each output, with the format that was asked for, else the one that the
/// ending of the output's name stands for, else "tree" on a terminal and "json" elsewhere. Throws a `Failure` with the
/// outcome `wrongUsage`, also for what `checkFormatOptions` refuses.
[[nodiscard]] std::vector<Destination> destinationsOf(const ImportRequest& request);

/// Throws a `Failure` with the outcome `wrongUsage` that lists the options when one of the request's settings is for
/// none of the destinations' formats, or has a value that one of them does not accept.
void checkFormatOptions(const ImportRequest& request, std::span<const Destination> destinations);

/// The file that an option of the format names for it to write, besides its output; nothing without such a setting.
[[nodiscard]] std::optional<std::string> furtherFile(const ImportRequest& request, const exporter::Exporter& exporter);

/// The values of the options of a format, from those of the request's settings that are for it. The settings must have
/// been checked.
[[nodiscard]] exporter::OptionValues formatOptions(const ImportRequest& request, const exporter::Exporter& exporter);

/// The failure of a command whose settings the format, or the model, does not have.
[[nodiscard]] Failure wrongOption(const std::string& format, const exporter::WrongOption& error);

} // namespace petal
