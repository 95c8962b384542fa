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

/// The files to import, and the folders around them.
struct Sources {
    std::vector<Source> files;                  // each once
    std::vector<std::filesystem::path> folders; // the folders that were searched for files
    std::vector<std::filesystem::path> besides; // the folders of files that were named; each once
};

/// Finds the files of the arguments, then of the list of files. A folder means the files below it whose name ends in
/// ".mdl", in any case, sorted by the bytes of their paths; links to folders are not followed. Throws a `Failure` when
/// the list cannot be read.
[[nodiscard]] Sources findSources(const JobsRequest& request);

/// Whether the request names exactly one file, and no folder or list.
[[nodiscard]] bool isSingleFile(const JobsRequest& request);

/// A name for the file at `path` that all spellings of the path share, except through links: without "." and repeated
/// separators and, if the path has "..", absolute and without links.
[[nodiscard]] std::string normalName(const std::string& path);

/// Reads the names in a list of files as unchanged bytes: one per line, or each ended by a NUL; empty ones are skipped.
/// "-" is standard input. A carriage return at the end of a line is removed unless a file has that name. Throws a
/// `Failure` with the outcome `inputNotRead`.
[[nodiscard]] std::vector<std::string> readFileList(const std::string& list, bool nulSeparated);

} // namespace petal
