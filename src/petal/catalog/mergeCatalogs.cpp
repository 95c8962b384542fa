#include "petal/catalog/mergeCatalogs.h"

#include "catalog/copyModel.h"
#include "petal/Failure.h"
#include "petal/catalog/openDatabase.h"
#include "petal/jobs/Console.h"
#include "petal/units/lossLines.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace petal {

namespace {

using catalog::Database;
using catalog::KnownModel;
using catalog::KnownUnit;

class TextOutput final : public text::Output {
public:
    void write(std::string_view bytes) override { text += bytes; }
    std::string text;
};

/// A catalogue that is merged.
struct Part {
    std::string name;
    std::unique_ptr<Database> database;
};

/// A model of a part.
struct Found {
    std::size_t part = 0;
    KnownModel model;
};
using FoundModels = std::map<std::string, Found>; // by path, in whose order they are put in

bool areSame(const KnownUnit& one, const KnownUnit& other) {
    return one.name == other.name && one.path == other.path && one.kind == other.kind && one.isFound == other.isFound &&
           one.remark == other.remark && one.facts == other.facts;
}

/// Whether two models have the same rows: the same files, read in the same way by the same petal.
bool areSame(const KnownModel& one, const KnownModel& other) {
    return one.facts == other.facts && one.version == other.version && one.reading == other.reading &&
           one.isImported == other.isImported && one.failure == other.failure &&
           std::ranges::equal(one.units, other.units, [](const auto& a, const auto& b) { return areSame(a, b); });
}

std::vector<Part> openParts(const CatalogRequest& request) {
    std::vector<Part> parts;
    for (const std::string& name : request.jobs.inputs) {
        std::error_code error;
        if (name == *request.output || std::filesystem::equivalent(name, *request.output, error)) {
            throw Failure(Outcome::wrongUsage, "'" + name + "' is a part and the result", "Name another file with -o.");
        }
        parts.push_back({name, openDatabase(name, catalog::Access::read)});
    }
    return parts;
}

FoundModels findModels(const std::vector<Part>& parts) {
    FoundModels found;
    for (std::size_t part = 0; part < parts.size(); ++part) {
        for (KnownModel& model : parts[part].database->models()) {
            const auto there = found.find(model.path);
            if (there == found.end()) {
                const std::string path = model.path;
                found.emplace(path, Found{part, std::move(model)});
            } else if (!areSame(there->second.model, model)) {
                throw Failure(Outcome::inputNotRead,
                              "'" + parts[there->second.part].name + "' and '" + parts[part].name +
                                  "' have different models of the path '" + model.path + "'",
                              "Make the parts from the same folders, at the same time, with --part.");
            }
        }
    }
    return found;
}

/// What a merge did.
struct MergeCounts {
    std::size_t written = 0;
    std::size_t unchanged = 0;
    std::size_t failed = 0; // of the models
    std::size_t dropped = 0;
};

MergeCounts merge(const std::vector<Part>& parts, const FoundModels& found, Database& whole) {
    MergeCounts counts;
    std::map<std::string, KnownModel> known;
    for (KnownModel& model : whole.models()) {
        if (found.contains(model.path)) {
            const std::string path = model.path;
            known.emplace(path, std::move(model));
        } else {
            whole.remove(model.id);
            ++counts.dropped;
        }
    }
    catalog::Ids free = whole.freeIds();
    for (const auto& [path, one] : found) {
        counts.failed += one.model.isImported ? 0 : 1;
        const auto there = known.find(path);
        if (there != known.end() && areSame(there->second, one.model)) {
            ++counts.unchanged;
            continue;
        }
        TextOutput output;
        catalog::RowWriter rows(output);
        catalog::copyModel(*parts[one.part].database, one.model.id, rows);
        catalog::putModel(whole, output.text, there != known.end() ? &there->second : nullptr, free);
        ++counts.written;
    }
    if (counts.written > 0 || counts.dropped > 0 || whole.isUnfinished()) {
        whole.finish();
    }
    return counts;
}

} // namespace

Outcome mergeCatalogs(const CatalogRequest& request) {
    const std::vector<Part> parts = openParts(request);
    const FoundModels found = withDatabase(Outcome::inputNotRead, [&] { return findModels(parts); });
    const std::unique_ptr<Database> whole = openDatabase(*request.output, catalog::Access::write);
    const MergeCounts counts = withDatabase(Outcome::outputFailed, [&] { return merge(parts, found, *whole); });
    if (!request.jobs.quiet) {
        Console(false).write("petal: " + counted(found.size(), "model") + " of " + counted(parts.size(), "catalogue") +
                             ": " + std::to_string(counts.written) + " written, " + std::to_string(counts.unchanged) +
                             " unchanged" + (counts.dropped > 0 ? "; dropped: " + std::to_string(counts.dropped) : "") +
                             "\n");
    }
    if (counts.failed > 0) {
        throw Failure(Outcome::someFailed,
                      std::to_string(counts.failed) + " of " + counted(found.size(), "model") + " failed",
                      "'petal catalog --ask failed-models " + *request.output + "' lists them.");
    }
    return Outcome::success;
}

} // namespace petal
