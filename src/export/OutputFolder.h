#pragma once

#include "text/Output.h"

#include <string>
#include <string_view>

namespace exporter {

/// The files that one export writes. Used by one thread.
///
/// A format only opens and writes. The owner of the folder makes all of its files final at once, or none. For a format
/// of one file the folder is that file.
class OutputFolder {
public:
    OutputFolder() = default;
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;
    virtual ~OutputFolder() = default;

    /// The file `name`, which the folder owns: a relative path with "/", no part of which is empty, "." or "..". A
    /// format of one file gives "". Each name may be opened once. Throws `std::system_error`.
    [[nodiscard]] virtual text::Output& open(std::string_view name) = 0;
    /// A further file that an option of the format names, with `Option::namesOutput`: a path as the user gave it. It
    /// becomes final together with the others. Throws `std::system_error`.
    [[nodiscard]] virtual text::Output& openBeside(const std::string& path) = 0;
};

} // namespace exporter
