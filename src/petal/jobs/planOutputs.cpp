#include "petal/jobs/planOutputs.h"

#include "petal/Failure.h"

#include <filesystem>
#include <unordered_map>

namespace petal {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuseBoth(const std::string& first, const std::string& second) {
    throw Failure(Outcome::wrongUsage,
                  "the results of '" + first + "' and '" + second + "' would be written to one place",
                  "Import them into different folders.");
}

std::string outputOf(const Source& source, const fs::path& folder, std::string_view ending) {
    const fs::path mirrored = folder / fs::path(normalName(source.path)).relative_path();
    return mirrored.string().append(ending);
}

} // namespace

std::vector<std::string> planOutputs(std::span<const Source> sources, const std::string& folder,
                                     std::string_view ending) {
    std::vector<std::string> outputs;
    outputs.reserve(sources.size());
    std::unordered_map<std::string, const Source*> owners;
    for (const Source& source : sources) {
        outputs.push_back(outputOf(source, folder, ending));
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

} // namespace petal
