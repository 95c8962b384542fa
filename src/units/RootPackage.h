#pragma once

#include "units/UnitTree.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace units {

/// A root of a model's packages whose name is not "Logical View", as in files of products in other languages.
struct RenamedRoot {
    std::size_t file = 0; ///< in `UnitTree::files`: the file with its content if that was found, otherwise the model
    PackageHead head;
};

/// The root of a Design; nothing if it has the name that the import requires.
[[nodiscard]] std::optional<RenamedRoot> findRenamedRoot(const UnitTree& tree);

/// Finds the paths within `part` of a file that name a class and begin with `root` (bytes, with escapes). Returns the
/// ranges of that first name, in order. Only properties count in which the import strips the path from "Logical View".
/// Reads the file to the end of `part`; throws `std::system_error` when it cannot be read.
[[nodiscard]] std::vector<Range> findPathsFrom(std::string_view root, const std::filesystem::path& file,
                                               const Range& part);

} // namespace units
