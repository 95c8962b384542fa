#include "petal/jobs/Sources.h"

#include "petal/import/InputFile.h"
#include "units/Folders.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <unordered_set>

namespace petal {

std::string normalName(const std::string& given) {
    const std::filesystem::path path(given);
    // The target of ".." depends on the links before it: ask the file system.
    const bool goesUp = std::find(path.begin(), path.end(), "..") != path.end();
    return goesUp ? std::filesystem::weakly_canonical(std::filesystem::absolute(path)) : path.lexically_normal();
}

namespace {

/// The name in a line that may be from Windows.
std::string_view nameIn(std::string_view line) {
    const bool isCut = line.ends_with('\r') && ::access(std::string(line).c_str(), F_OK) != 0;
    return line.substr(0, line.size() - (isCut ? 1 : 0));
}

} // namespace

std::vector<std::string> readFileList(const std::string& list, bool nulSeparated) {
    const std::string contents = InputFile(list).readRest();
    const char separator = nulSeparated ? '\0' : '\n';
    std::vector<std::string> names;
    for (std::string_view rest = contents; !rest.empty();) {
        const std::string_view name = rest.substr(0, rest.find(separator));
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        if (!name.empty()) {
            names.emplace_back(nulSeparated ? name : nameIn(name));
        }
    }
    return names;
}

namespace {

namespace fs = std::filesystem;

bool isModelName(const fs::path& name) {
    std::string extension = name.extension();
    std::ranges::transform(extension, extension.begin(), [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte | 0x20) : byte;
    });
    return extension == ".mdl";
}

/// A broken link counts, so that its missing model is reported.
bool isModelFile(const fs::directory_entry& entry) {
    std::error_code error;
    const fs::file_type type = entry.status(error).type();
    return isModelName(entry.path().filename()) && (type == fs::file_type::regular || type == fs::file_type::not_found);
}

/// Appends the model files of the folder, without those below, and returns its subfolders. A folder that cannot be read
/// is appended as a source.
std::vector<fs::path> searchFolder(const fs::path& folder, std::vector<Source>& found) {
    std::vector<fs::path> inner;
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code unknown;
        if (entry->symlink_status(unknown).type() == fs::file_type::directory) {
            inner.push_back(entry->path());
        } else if (isModelFile(*entry)) {
            found.push_back({entry->path(), ""});
        }
    }
    if (error) {
        found.push_back({folder, "cannot search the folder: " + error.message()});
    }
    return inner;
}

std::vector<Source> searchTree(const fs::path& root) {
    std::vector<Source> found;
    for (std::vector<fs::path> waiting{root}; !waiting.empty();) {
        const fs::path folder = std::move(waiting.back());
        waiting.pop_back();
        std::vector<fs::path> inner = searchFolder(folder, found);
        std::ranges::move(inner, std::back_inserter(waiting));
    }
    std::ranges::sort(found, {}, &Source::path);
    return found;
}

bool isFolder(const std::string& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

} // namespace

Sources findSources(const JobsRequest& request) {
    std::vector<std::string> inputs = request.inputs;
    if (request.filesFrom) {
        std::ranges::move(readFileList(*request.filesFrom, request.nulSeparated), std::back_inserter(inputs));
    }
    Sources sources;
    std::unordered_set<std::string> known;
    std::unordered_set<std::string> besides;
    const auto add = [&](Source source) {
        if (known.insert(normalName(source.path)).second) {
            sources.files.push_back(std::move(source));
        }
    };
    for (const std::string& input : inputs) {
        if (isFolder(input)) {
            std::ranges::for_each(searchTree(input), add);
            sources.folders.emplace_back(input);
            continue;
        }
        add({input, ""});
        if (const fs::path folder = units::folderOf(input); besides.insert(folder).second) {
            sources.besides.push_back(folder);
        }
    }
    return sources;
}

bool isSingleFile(const JobsRequest& request) {
    return request.inputs.size() == 1 && !request.filesFrom && !isFolder(request.inputs.front());
}

} // namespace petal
