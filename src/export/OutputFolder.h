#pragma once

#include "text/Output.h"

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
    /// The further file that an option of the format names, with `Option::namesOutput`; only for a format with such an
    /// option that has a value. It becomes final together with the others.
    [[nodiscard]] virtual text::Output& openBeside() = 0;
};

} // namespace exporter
