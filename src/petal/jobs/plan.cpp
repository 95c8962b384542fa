#include "petal/jobs/plan.h"

#include "notation/Header.h"
#include "petal/Failure.h"
#include "petal/ledger/ledgerForms.h"
#include "petal/output/Descriptor.h"
#include "units/OpenFile.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <tuple>
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

namespace {

bool isModelFile(const std::string& path) {
    std::array<char, 20> head{}; // the bridge looks for the header within these bytes
    try {
        const std::size_t length = units::OpenFile(path).read(head.data(), head.size());
        return std::string_view(head.data(), length).find(notation::headerStart) != std::string_view::npos;
    } catch (const std::system_error&) {
        return false;
    }
}

/// Refuses more than one output to standard output.
void refuseSharedStandardOutput(const ImportRequest& request, const JobsRequest& jobs, bool isSingle) {
    int models = 0;
    for (const Destination& destination : request.destinations) {
        models += isSingle && destination.path.value_or("-") == "-" ? 1 : 0;
        models += destination.beside == "-" ? 1 : 0;
    }
    const bool hasLedger = request.ledger == "-";
    const bool hasReport = jobs.report == "-";
    if (models > 1) {
        throw Failure(Outcome::wrongUsage, "two forms of the model would both go to standard output",
                      "Give one of them a file.");
    }
    if (models + (hasLedger ? 1 : 0) + (hasReport ? 1 : 0) > 1) {
        throw Failure(Outcome::wrongUsage,
                      std::string(models > 0 ? "the model" : "the ledger") + " and " +
                          (hasReport ? "the report" : "the ledger") + " would both go to standard output",
                      "Give one of them a file.");
    }
}

} // namespace

FileUses planUses(std::span<const Source> sources, std::span<const ImportPaths> paths, const ImportRequest& request,
                  const JobsRequest& jobs) {
    refuseSharedStandardOutput(request, jobs, sources.size() == 1);
    FileUses uses;
    for (const Source& source : sources) {
        uses.reads(source.path);
    }
    if (jobs.filesFrom) {
        uses.reads(*jobs.filesFrom);
    }
    for (const ImportPaths& planned : paths) {
        std::ranges::for_each(planned.models, [&](const std::string& model) { uses.writes(model); });
        uses.writes(planned.ledger);
    }
    uses.writes(request.log.value_or(""));
    uses.writes(jobs.report.value_or(""));
    return uses;
}

void refuseModelFiles(const FileUses& uses) {
    for (const auto& [file, path] : uses.getWritten()) {
        if (isModelFile(path)) {
            throw Failure(Outcome::wrongUsage, "writing '" + path + "' would overwrite a model file",
                          "Write to another place.");
        }
    }
}

namespace {

bool isNewer(const timespec& one, const timespec& other) {
    return std::tie(one.tv_sec, one.tv_nsec) > std::tie(other.tv_sec, other.tv_nsec);
}

/// The last bytes of `output` if it is a regular file that was written after `source` last changed; else "".
std::string endOfNewer(const std::string& source, const std::string& output) {
    constexpr off_t most = 4096;
    struct stat from {};
    struct stat made {};
    if (::stat(source.c_str(), &from) != 0 || ::stat(output.c_str(), &made) != 0 || !S_ISREG(made.st_mode) ||
        !isNewer(made.st_mtim, from.st_mtim)) {
        return "";
    }
    const Descriptor file(::open(output.c_str(), O_RDONLY | O_CLOEXEC));
    std::string last(static_cast<std::size_t>(std::min(made.st_size, most)), '\0');
    const ssize_t count = ::pread(file.get(), last.data(), last.size(), made.st_size - static_cast<off_t>(last.size()));
    return count == static_cast<ssize_t>(last.size()) ? last : "";
}

bool isWholeModel(const std::string& end) {
    return end.ends_with('\n');
}

bool isWholeLedger(const std::string& end) {
    const std::size_t line = end.size() < 2 ? std::string::npos : end.rfind('\n', end.size() - 2);
    return end.ends_with('\n') && std::string_view(end).substr(line + 1).starts_with(ledgerEnd);
}

} // namespace

bool isUpToDate(const std::string& source, const ImportPaths& paths) {
    return !(paths.models.empty() && paths.ledger.empty()) &&
           std::ranges::all_of(
               paths.models,
               [&](const std::string& model) { return !model.empty() && isWholeModel(endOfNewer(source, model)); }) &&
           (paths.ledger.empty() || isWholeLedger(endOfNewer(source, paths.ledger)));
}

} // namespace petal
