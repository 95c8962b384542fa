#include "petal/jobs/planOutputs.h"

#include "petal/Failure.h"

#include <filesystem>
#include <set>
#include <sys/stat.h>
#include <unordered_map>
#include <utility>

namespace petal {

namespace {

namespace fs = std::filesystem;

using Identity = std::pair<dev_t, ino_t>;

/// What is behind a path, if it is a regular file.
std::optional<Identity> identityOf(const std::string& path) {
    struct stat status {};
    const bool isFile = ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    return isFile ? std::optional(Identity(status.st_dev, status.st_ino)) : std::nullopt;
}

/// Tells files that would be overwritten.
class SourceFiles {
public:
    explicit SourceFiles(std::span<const Source> sources) {
        for (const Source& source : sources) {
            if (const auto identity = identityOf(source.path)) {
                identities_.insert(*identity);
            }
        }
    }

    void refuse(const std::string& file) const {
        if (const auto identity = identityOf(file); identity && identities_.contains(*identity)) {
            throw Failure(Outcome::wrongUsage, "writing '" + file + "' would overwrite a model file",
                          "Write to another place.");
        }
    }

private:
    std::set<Identity> identities_;
};

[[noreturn]] void refuseBoth(const std::string& first, const std::string& second) {
    throw Failure(Outcome::wrongUsage,
                  "the results of '" + first + "' and '" + second + "' would be written to one place",
                  "Import them into different folders.");
}

std::string outputOf(const Source& source, const fs::path& folder, std::string_view suffix) {
    const fs::path mirrored = folder / fs::path(normalName(source.path)).relative_path();
    return mirrored.string() + "." + std::string(suffix);
}

} // namespace

std::vector<std::string> planOutputs(std::span<const Source> sources, const std::string& folder,
                                     std::string_view suffix) {
    std::vector<std::string> outputs;
    outputs.reserve(sources.size());
    std::unordered_map<std::string, const Source*> owners;
    const SourceFiles files(sources);
    for (const Source& source : sources) {
        outputs.push_back(outputOf(source, folder, suffix));
        files.refuse(outputs.back());
        if (const auto [owner, isNew] = owners.emplace(outputs.back(), &source); !isNew) {
            refuseBoth(owner->second->path, source.path);
        }
    }
    for (std::size_t index = 0; index < sources.size(); ++index) {
        for (fs::path above = fs::path(outputs[index]).parent_path(); above.string().size() > folder.size();
             above = above.parent_path()) {
            if (const auto owner = owners.find(above); owner != owners.end()) {
                refuseBoth(owner->second->path, sources[index].path);
            }
        }
    }
    return outputs;
}

void refuseSource(std::span<const Source> sources, const std::string& file) {
    SourceFiles(sources).refuse(file);
}

} // namespace petal
