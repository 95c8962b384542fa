#include "petal/diff/Sides.h"

#include "diff/PackedDocument.h"
#include "export/json/writeJson.h"
#include "petal/Failure.h"
#include "petal/import/InputFile.h"
#include "petal/import/ModelSource.h"
#include "petal/import/PlugIn.h"
#include "petal/jobs/ProcessPool.h"
#include "petal/output/Descriptor.h"
#include "petal/output/MappedFile.h"
#include "petal/output/fileFailure.h"
#include "petal/units/lossLines.h"
#include "petal/units/unitOptions.h"
#include "petal/units/unitTrees.h"
#include "source/makeQuidMap.h"
#include "source/makeSourceMap.h"
#include "text/escape.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace petal {

namespace {

constexpr std::string_view noModel = "/dev/null";
constexpr const char* temporaryFile = "a temporary file";

/// Whether bytes at the beginning of a file are those of a JSON document. A model file begins with "(".
bool isJson(std::string_view head) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    head.remove_prefix(head.starts_with(mark) ? mark.size() : 0);
    const std::size_t first = head.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && (head[first] == '{' || head[first] == '[');
}

bool isRegularFile(const std::string& path) {
    struct stat status {};
    return path != "-" && ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// A file without a name, which a child process finds by its descriptor.
Descriptor namelessFile(std::string_view contents) {
    try {
        Descriptor file(openNamelessFile());
        writeFully(file.get(), contents);
        return file;
    } catch (const std::system_error& error) {
        throw outputFailure(temporaryFile, error);
    }
}

/// A file in memory. A comparison has both models there in any case.
Descriptor fileInMemory() {
    Descriptor file(::memfd_create("petal", MFD_CLOEXEC));
    return file.isOpen() ? std::move(file) : namelessFile("");
}

std::string pathOf(const Descriptor& file) {
    return "/proc/self/fd/" + std::to_string(file.get());
}

/// Whether the report tells where elements are. Else a search for quids, which is faster, finds what is needed.
bool needsPlaces(const DiffRequest& request) {
    return request.form == "json" || std::ranges::count(request.shown, "units") > 0;
}

/// Imports a model and writes its document for this process's parent.
ImportResult importPacked(const ImportRequest& request, const ImportContext& context, bool withPlaces, int descriptor) {
    ImportContext own = context;
    own.steps = withPlaces ? source::Steps::all : source::Steps::makings;
    own.takeModel = [&](const FinishedImport& import) {
        const auto makeMap = withPlaces ? source::makeSourceMap : source::makeQuidMap;
        const source::SourceMap places = readAgain(request.file, "the places of objects", [&] {
            return makeMap(import.source.getTree(), import.trace, import.model);
        });
        try {
            DescriptorOutput output(descriptor);
            diff::DocumentPacker packer(output);
            exporter::giveDocument(import.model, &places, exporter::Lossy::untold, packer);
            packer.finish();
        } catch (const std::system_error& error) {
            throw outputFailure(temporaryFile, error);
        }
    };
    return importModel(request, own);
}

/// A side while it is being read.
class Reading {
public:
    Reading(const Side& side, const DiffRequest& request) : side_(side) {
        if (side.path == noModel) {
            return;
        }
        if (isRegularFile(side.path) && !request.isGit) {
            file_ = side.path;
            InputFile input(side.path);
            std::array<char, 64> head{};
            isJson_ = isJson({head.data(), input.read(head.data(), head.size())});
            if (isJson_) {
                document_ = InputFile(side.path).readRest();
            }
        } else { // a pipe can be read once only; and git's file is not beside its units
            std::string contents = InputFile(side.path).readRest();
            isJson_ = isJson(contents);
            if (isJson_) {
                document_ = std::move(contents);
            } else {
                input_ = namelessFile(contents);
                file_ = pathOf(input_);
            }
        }
        if (!isJson_) {
            output_ = fileInMemory();
        }
    }

    [[nodiscard]] bool isImported() const { return output_.isOpen(); }
    [[nodiscard]] const Side& getSide() const { return side_; }
    [[nodiscard]] const std::string& getFile() const { return file_; }

    [[nodiscard]] ImportTask task(const DiffRequest& request, const FileUses& uses, units::UnitLocator& locator) const {
        ImportRequest import;
        import.file = file_;
        import.types = request.types;
        import.encoding = request.encoding;
        import.units = request.units;
        import.logLevel = "ERROR";
        import.namesFile = !input_.isOpen(); // its path is that of a descriptor
        import.areUnitsTold = false;
        import.isSummarised = false;
        import.isCounted = false;
        import.areObjectsCounted = false;
        return {.request = std::move(import),
                .uses = &uses,
                .locator = &locator,
                .run = [isPlaced = needsPlaces(request), descriptor = output_.get()](
                           const ImportRequest& one,
                           const ImportContext& context) { return importPacked(one, context, isPlaced, descriptor); },
                .files = {},
                .errors = [](std::string_view line) { std::fwrite(line.data(), 1, line.size(), stderr); },
                .log = {}};
    }

    /// Called after the import, if there was one.
    [[nodiscard]] ReadSide read(const DiffRequest& request) {
        if (!isJson_ && !isImported()) {
            return {};
        }
        try {
            ReadSide side;
            side.model = isJson_ ? diff::readModel(std::move(document_)) : readPacked();
            side.isModelFile = !isJson_;
            if (side.isModelFile && std::ranges::count(request.shown, "layout") > 0) {
                side.drawings = readDrawings(request);
            }
            return side;
        } catch (const diff::BadDocument& error) {
            throw Failure(Outcome::inputNotRead,
                          "'" + side_.name + "' is not a JSON document that petal can compare: " + error.what(),
                          "'petal import --format json -O places=true' writes them.");
        } catch (const std::system_error& error) {
            throw inputFailure(side_.name, error);
        }
    }

private:
    [[nodiscard]] diff::Model readPacked() {
        const auto mapped = std::make_shared<const MappedFile>(output_.get());
        output_.close();
        return diff::readPacked({mapped, mapped->view().data()}, mapped->view().size());
    }

    [[nodiscard]] std::unique_ptr<layout::NotationTree> readDrawings(const DiffRequest& request) const {
        units::UnitLocator locator = makeUnitLocator(request.units);
        return std::make_unique<layout::NotationTree>(request.units.mode == "skip" ? readModelAlone(file_)
                                                                                   : readModelTree(file_, locator));
    }

    Side side_;
    std::string file_; // the model file; empty for a document
    bool isJson_ = false;
    std::string document_;
    Descriptor input_;  // what was read from a pipe
    Descriptor output_; // of the import
};

void tellLosses(const Side& side, const ImportEnd& end) {
    units::LostUnits lost;
    for (const units::ModelLosses& losses : end.losses) {
        lost.add(losses);
    }
    TextLines lines = lossLines(lost);
    for (std::string& line : lines) {
        line.insert(0, text::printableText(side.name) + ": ");
    }
    std::fputs(asNotes(lines).c_str(), stderr);
}

void import(std::array<Reading, 2>& readings, const DiffRequest& request) {
    FileUses uses;
    for (const Reading& reading : readings) {
        uses.reads(reading.getFile());
    }
    if (request.output) {
        uses.writes(*request.output);
    }
    units::UnitLocator locator = makeUnitLocator(request.units);
    static_cast<void>(PlugIn::load()); // once for both
    const StopSignals signals;
    ProcessPool pool({}, signals);
    for (std::size_t number = 0; number < readings.size(); ++number) {
        if (readings[number].isImported()) {
            pool.start(number, readings[number].task(request, uses, locator));
        }
    }
    std::array<std::optional<ImportEnd>, 2> ends;
    while (pool.getCount() > 0) {
        for (EndedImport& ended : pool.wait(std::chrono::hours(1))) {
            ends[ended.number] = std::move(ended.end);
        }
    }
    for (std::size_t number = 0; number < readings.size(); ++number) {
        const Side& side = readings[number].getSide();
        if (ends[number] && !ends[number]->isDone()) {
            throw Failure(ends[number]->outcome, "'" + side.name + "' cannot be imported: " + ends[number]->text,
                          ends[number]->advice);
        }
        if (ends[number] && !request.quiet && !request.isGit) {
            tellLosses(side, *ends[number]);
        }
    }
    const auto lacksUnits = [](const std::optional<ImportEnd>& end) { return end && end->result.unitsMissing > 0; };
    if (lacksUnits(ends[0]) != lacksUnits(ends[1]) && !request.quiet && !request.isGit) {
        std::fputs("petal: diff: only one of the models lacks units; what they hold seems to be added or removed\n",
                   stderr);
    }
}

} // namespace

std::array<ReadSide, 2> readSides(const std::array<Side, 2>& sides, const DiffRequest& request) {
    std::array<Reading, 2> readings{Reading(sides[0], request), Reading(sides[1], request)};
    if (readings[0].isImported() || readings[1].isImported()) {
        import(readings, request);
    }
    return {readings[0].read(request), readings[1].read(request)};
}

} // namespace petal
