#pragma once

#include "petal/commandLine.h"

#include <string>
#include <vector>

namespace petal {

/// The words of a choice such as "json|tree", and the settings of formats' options; none when the value is of another
/// kind.
[[nodiscard]] std::vector<std::string> choices(const OptionText& option);
/// Whether the option sets an option of a format.
[[nodiscard]] bool setsFormatOption(const OptionText& option);

/// An option of one or several formats.
struct FormatOption {
    std::string name;                // without the WORD of a family
    std::vector<std::string> values; // of all these formats; empty when it takes numbers or texts
};
/// Those of all formats, each once, in the order of the table.
[[nodiscard]] std::vector<FormatOption> formatOptions();
/// Whether the value is the path of a file or a folder.
[[nodiscard]] bool takesPath(const OptionText& option);
/// A description that fits after an option in a list: the first line, without what joins it to the next.
[[nodiscard]] std::string shortDescription(const OptionText& option);
[[nodiscard]] std::string joined(const std::vector<std::string>& words, const std::string& between);
/// `text` with `escape` ahead of each of these characters.
[[nodiscard]] std::string escaped(const std::string& text, const std::string& characters, const std::string& escape);

} // namespace petal
