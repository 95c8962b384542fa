#include "petal/catalog/CatalogRun.h"

#include "catalog/copyModel.h"
#include "petal/Failure.h"
#include "petal/jobs/ShareOfFiles.h"
#include "petal/log/logFormats.h"
#include "petal/output/MappedFile.h"
#include "text/utf8.h"

#include <algorithm>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>

namespace petal {

namespace {

namespace fs = std::filesystem;

constexpr auto progressInterval = std::chrono::milliseconds(250);

class TextOutput final : public text::Output {
public:
    void write(std::string_view bytes) override { text += bytes; }
    std::string text;
};

/// The path of `file` below `folder`; empty if it is not there.
std::string below(const std::string& file, const std::string& folder) {
    const fs::path path = fs::path(normalName(file)).lexically_relative(fs::path(normalName(folder)));
    return path.empty() || *path.begin() == ".." ? std::string() : path.generic_string();
}

std::string lastName(const std::string& folder) {
    const fs::path path = fs::absolute(folder).lexically_normal();
    return path.has_filename() ? path.filename() : path.parent_path().filename();
}

} // namespace

std::vector<std::string> catalogPaths(std::span<const Source> sources, std::span<const std::string> inputs) {
    std::vector<std::string> folders;
    for (const std::string& input : inputs) {
        std::error_code error;
        if (fs::is_directory(input, error)) {
            folders.push_back(input);
        }
    }
    std::set<std::string> named;
    for (const std::string& input : inputs) {
        named.insert(normalName(input));
    }
    std::vector<std::string> paths;
    std::set<std::string> taken;
    for (const Source& source : sources) {
        std::string path = fs::path(source.path).filename().string();
        std::string folderName;
        const bool isNamed = named.contains(normalName(source.path));
        for (const std::string& folder : folders) {
            if (std::string inner = isNamed ? "" : below(source.path, folder); !inner.empty()) {
                path = std::move(inner);
                folderName = lastName(folder);
                break;
            }
        }
        folderName = folderName.empty() ? lastName(fs::absolute(source.path).parent_path().string()) : folderName;
        path = text::repairedUtf8(path);
        std::string unique = path;
        for (int further = 1; !taken.insert(unique).second; ++further) {
            unique =
                text::repairedUtf8(folderName) + (further > 1 ? " (" + std::to_string(further) + ")/" : "/") + path;
        }
        paths.push_back(std::move(unique));
    }
    return paths;
}

CatalogRun::CatalogRun(std::span<const Source> sources, std::span<const std::string> paths, catalog::Database& database,
                       const CatalogRequest& request, const CatalogReading& reading, const FileUses& uses,
                       units::UnitLocator& locator)
    : sources_(sources), paths_(paths), database_(database), request_(request), reading_(reading), uses_(uses),
      locator_(locator), console_(!request.jobs.quiet) {
    for (catalog::KnownModel& model : database.models()) {
        known_.emplace(model.path, std::move(model));
    }
    free_ = database.freeIds();
    counts_.models = sources.size();
}

const catalog::KnownModel* CatalogRun::knownOf(std::size_t number) const {
    const auto found = known_.find(paths_[number]);
    return found != known_.end() ? &found->second : nullptr;
}

CatalogCounts CatalogRun::run(const StopSignals& signals) {
    dropGone();
    ProcessPool pool(limitsOf(request_.jobs), signals);
    for (;;) {
        startMore(pool);
        settleEnded();
        if (settled_ == sources_.size()) {
            break;
        }
        if (pool.getCount() == 0) {
            continue; // the last models needed no reading
        }
        for (EndedImport& ended : pool.wait(progressInterval)) {
            jobs_[ended.number].end = std::move(ended.end);
            ended_.insert(ended.number);
        }
        startMore(pool); // they run while this process writes
        settleEnded();
        console_.show({settled_, sources_.size(), counts_.failed});
    }
    console_.clear();
    if (hasChanged_ || database_.isUnfinished()) {
        database_.finish();
    }
    return counts_;
}

/// Removes the models without a file, except those in folders that cannot be searched.
void CatalogRun::dropGone() {
    std::set<std::string> there(paths_.begin(), paths_.end());
    std::vector<std::string> hidden;
    for (std::size_t number = 0; number < sources_.size(); ++number) {
        if (!sources_[number].unreadable.empty()) {
            hidden.push_back(paths_[number] == "." ? "" : paths_[number] + "/");
        }
    }
    std::vector<const catalog::KnownModel*> gone;
    for (const auto& model : known_) {
        const std::string& path = model.first;
        const bool isHidden = std::ranges::any_of(hidden, [&](const std::string& at) { return path.starts_with(at); });
        if (!there.contains(path) && !isHidden) {
            gone.push_back(&model.second);
        }
    }
    std::ranges::sort(gone, {}, [](const catalog::KnownModel* model) { return model->id; });
    for (const catalog::KnownModel* model : gone) {
        database_.remove(model->id);
        hasChanged_ = true;
    }
    counts_.dropped = gone.size();
}

void CatalogRun::startMore(ProcessPool& pool) {
    const auto most = static_cast<std::size_t>(request_.jobs.parallel);
    while (next_ < sources_.size() && pool.getCount() < most && next_ < settled_ + mostAhead()) {
        std::vector<NumberedTask> share = nextShare();
        if (!share.empty()) {
            pool.start(std::move(share));
        }
    }
}

/// How many models may wait for an earlier one; each has an open file.
std::size_t CatalogRun::mostAhead() const {
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    const auto parallel = static_cast<std::size_t>(request_.jobs.parallel);
    return std::clamp<std::size_t>(limit.rlim_cur / 3, parallel, parallel * mostFilesInShare * 2);
}

/// The next readings for one process: several if the files are small. Models that need none end at once.
std::vector<NumberedTask> CatalogRun::nextShare() {
    const auto parallel = static_cast<std::size_t>(request_.jobs.parallel);
    const std::size_t atATime = std::min(sources_.size() - next_, mostAhead()) / (parallel * 2);
    const std::size_t most = std::clamp(atATime, std::size_t{1}, mostFilesInShare);
    std::vector<NumberedTask> share;
    ShareOfFiles files;
    for (; next_ < sources_.size() && next_ < settled_ + mostAhead() && share.size() < most; ++next_) {
        if (!files.take(sources_[next_].path, share.empty())) {
            break;
        }
        if (std::optional<ImportTask> task = taskFor(next_)) {
            share.push_back({next_, *std::move(task)});
        }
    }
    return share;
}

/// The reading of a model; none, and its job has ended, if there is nothing to read.
std::optional<ImportTask> CatalogRun::taskFor(std::size_t number) {
    const Source& source = sources_[number];
    Job& job = jobs_[number];
    const catalog::KnownModel* known = knownOf(number);
    const bool isSame = known != nullptr && known->version == reading_.version && known->reading == reading_.options;
    const bool isReadable = source.unreadable.empty();
    if (!isReadable || (isSame && looksUnchanged(*known, source.path))) {
        if (!isReadable) {
            job.end = endWith(std::make_exception_ptr(Failure(Outcome::inputNotRead, source.unreadable, "")));
        }
        ended_.insert(number);
        return std::nullopt;
    }
    job.rows = Descriptor(::memfd_create("rows", MFD_CLOEXEC));
    if (!job.rows.isOpen()) {
        job.rows = Descriptor(openNamelessFile());
    }
    ImportTask task{
        .request = request_.import,
        .uses = &uses_,
        .locator = &locator_,
        .run =
            [this, number, known, rows = job.rows.get()](const ImportRequest& request, const ImportContext& context) {
                return readModel(request, context, reading_, paths_[number], known, rows);
            },
        .files = {},
        .errors = {},
        .log = {}};
    task.request.file = source.path;
    task.errors = [this, &source](std::string_view line) {
        console_.write(findLogFormat("text")->lineOf(line, source.path));
    };
    return task;
}

void CatalogRun::settleEnded() {
    while (ended_.erase(settled_) > 0) {
        settle(settled_, jobs_.at(settled_));
        jobs_.erase(settled_++);
    }
}

void CatalogRun::settle(std::size_t number, Job& job) {
    const catalog::KnownModel* known = knownOf(number);
    if (!job.end.isDone()) {
        ++counts_.failed;
        const std::string name = sources_[number].path + ": ";
        console_.write(failureLines(name + job.end.text, ""));
        if (sources_[number].unreadable.empty()) {
            putFailure(number, job.end.text, known);
        }
        return;
    }
    if (job.rows.isOpen()) {
        const MappedFile rows(job.rows.get());
        if (!rows.view().empty()) {
            ++counts_.read;
            putRows(rows.view(), known);
            return;
        }
    }
    ++counts_.unchanged;
    keepUnchanged(number, *known);
}

void CatalogRun::putRows(std::string_view bytes, const catalog::KnownModel* known) {
    catalog::putModel(database_, bytes, known, free_);
    hasChanged_ = true;
}

void CatalogRun::putFailure(std::size_t number, const std::string& text, const catalog::KnownModel* known) {
    catalog::KnownModel model;
    model.path = paths_[number];
    model.version = reading_.version;
    model.reading = reading_.options;
    model.failure = text::repairedUtf8(text);
    try {
        model.facts = factsOf(sources_[number].path);
    } catch (const std::system_error&) { // the failure says why
    }
    const bool isKnown = known != nullptr && !known->isImported && known->failure == model.failure &&
                         known->facts == model.facts && known->version == model.version &&
                         known->reading == model.reading;
    if (!isKnown) {
        TextOutput output;
        catalog::RowWriter rows(output);
        catalog::writeFailedRow(model, rows);
        putRows(output.text, known);
    }
}

/// Brings the times of the model's files up to date.
void CatalogRun::keepUnchanged(std::size_t number, const catalog::KnownModel& known) {
    catalog::KnownModel now = known;
    const std::string& file = sources_[number].path;
    now.facts.modified = modifiedTime(file);
    bool isSame = now.facts == known.facts;
    for (std::size_t index = 0; index < now.units.size(); ++index) {
        if (catalog::KnownUnit& unit = now.units[index]; unit.isFound) {
            unit.facts.modified = modifiedTime(unitFile(unit, file));
            isSame = isSame && unit.facts == known.units[index].facts;
        }
    }
    if (!isSame) {
        database_.setTimes(now);
        hasChanged_ = true;
    }
}

} // namespace petal
