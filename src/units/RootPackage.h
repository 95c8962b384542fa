#pragma once

#include "units/UnitTree.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace units {

/// The root of a model's packages under another name than "Logical View", as products in other languages give it.
struct RenamedRoot {
    std::size_t file = 0; ///< in `UnitTree::files`: the one with its content when that was found, else the model
    PackageHead head;
};

/// The root of a Design, unless it has the name that the import knows it by.
[[nodiscard]] std::optional<RenamedRoot> findRenamedRoot(const UnitTree& tree);

/// Where a file names a class by a path that begins with `root`, its bytes with escapes: the ranges of that first name,
/// in order. Only the texts in which the import strips such a path from "Logical View" on count, and only those within
/// `part`. Reads the file to the end of `part`; throws `std::system_error` when it cannot be read.
[[nodiscard]] std::vector<Range> findPathsFrom(std::string_view root, const std::filesystem::path& file,
                                               const Range& part);

} // namespace units
