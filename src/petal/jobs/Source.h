#pragma once

#include "petal/Request.h"

#include <filesystem>
#include <string>
#include <vector>

namespace petal {

/// A model file to import, or a folder whose model files cannot be found.
struct Source {
    std::string path;       // as given, or below a folder as given
    std::string unreadable; // why the folder cannot be searched; empty for a file
};

/// What is to be imported, and where it was found.
struct Sources {
    std::vector<Source> files;                  // each once
    std::vector<std::filesystem::path> folders; // that were searched for files
    std::vector<std::filesystem::path> besides; // of the files that were named one by one; each once
};

/// What the arguments and the list of files stand for, in that order. A folder stands for the files below it whose name
/// ends in ".mdl", in any case, in the order of their names' bytes; links to folders are not followed. Throws a
/// `Failure` when the list cannot be read.
[[nodiscard]] Sources findSources(const JobsRequest& request);

/// Whether it is one file, and the request leaves no other choice.
[[nodiscard]] bool isSingleFile(const JobsRequest& request);

/// A name for the file at `path` that every spelling of the path without links shares: without "." and doubled
/// separators, and, where the path has "..", absolute and without links.
[[nodiscard]] std::string normalName(const std::string& path);

} // namespace petal
