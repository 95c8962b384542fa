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

/// The names in a list of files, bytes as they stand, without empty ones: one to a line, or each ended by a NUL. "-" is
/// standard input. Where no file has the name of a line that ends with a carriage return, the name is without it.
/// Throws a `Failure` with the outcome `inputNotRead`.
[[nodiscard]] std::vector<std::string> readFileList(const std::string& list, bool nulSeparated);

} // namespace petal
