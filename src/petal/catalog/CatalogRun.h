#pragma once

#include "petal/catalog/readModel.h"
#include "petal/jobs/Console.h"
#include "petal/jobs/ProcessPool.h"
#include "petal/jobs/Sources.h"

#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace petal {

/// What became of the models of a catalogue.
struct CatalogCounts {
    std::size_t models = 0;
    std::size_t read = 0; // their rows are new
    std::size_t unchanged = 0;
    std::size_t failed = 0;
    std::size_t dropped = 0; // from the catalogue: their files are gone
};

/// The paths of the sources in a catalogue: relative to the folder of the command line that they were found in, or the
/// name of a file that was named itself. Of two that would be the same the later one begins with the name of its
/// folder. `inputs` are the files and folders of the command line.
[[nodiscard]] std::vector<std::string> catalogPaths(std::span<const Source> sources,
                                                    std::span<const std::string> inputs);

/// Brings a catalogue up to date with files: reads those that have changed, in processes of their own, several in
/// parallel, and writes their rows in the order of the sources, so that the rows do not depend on the number of
/// processes. This process must have one thread.
class CatalogRun {
public:
    /// `paths` are those of the sources. All references must live as long.
    CatalogRun(std::span<const Source> sources, std::span<const std::string> paths, catalog::Database& database,
               const CatalogRequest& request, const CatalogReading& reading, const FileUses& uses,
               units::UnitLocator& locator);

    /// Called once. Throws `Stopped`, `catalog::DatabaseFailure`, and `std::system_error` when a temporary file cannot
    /// be made. A model that fails is not thrown: the catalogue tells of it.
    CatalogCounts run(const StopSignals& signals);

private:
    /// The reading of a model, under way or ended.
    struct Job {
        Descriptor rows; // the file that its rows are written to; none if there is nothing to write
        ImportEnd end;
    };

    void dropGone();
    void startMore(ProcessPool& pool);
    [[nodiscard]] std::size_t mostAhead() const;
    std::vector<NumberedTask> nextShare();
    std::optional<ImportTask> taskFor(std::size_t number);
    void settleEnded();
    void settle(std::size_t number, Job& job);
    void putRows(std::string_view bytes, const catalog::KnownModel* known);
    void putFailure(std::size_t number, const std::string& text, const catalog::KnownModel* known);
    void keepUnchanged(std::size_t number, const catalog::KnownModel& known);
    [[nodiscard]] const catalog::KnownModel* knownOf(std::size_t number) const;

    std::span<const Source> sources_;
    std::span<const std::string> paths_;
    catalog::Database& database_;
    const CatalogRequest& request_;
    const CatalogReading& reading_;
    const FileUses& uses_;
    units::UnitLocator& locator_;
    Console console_;

    std::unordered_map<std::string, catalog::KnownModel> known_; // by path
    catalog::Ids free_;
    CatalogCounts counts_;
    bool hasChanged_ = false;
    std::map<std::size_t, Job> jobs_; // by number
    std::set<std::size_t> ended_;
    std::size_t next_ = 0;    // the first source that has not been started
    std::size_t settled_ = 0; // the number of settled sources
};

} // namespace petal
