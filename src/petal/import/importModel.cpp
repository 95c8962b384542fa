#include "petal/import/importModel.h"

#include "export/Omissions.h"
#include "export/exporters.h"
#include "host/log/KelException.h"
#include "host/log/Severity.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/model/KelTraversalOperation.h"
#include "host/options/KelOptionList.h"
#include "layout/NotationTree.h"
#include "petal/import/ModelSource.h"
#include "petal/import/PlugIn.h"
#include "petal/import/findPositions.h"
#include "petal/import/formats.h"
#include "petal/import/importOptions.h"
#include "petal/ledger/LedgerReport.h"
#include "petal/log/LogWriter.h"
#include "petal/output/OutputFiles.h"
#include "petal/output/fileFailure.h"
#include "petal/units/lossLines.h"
#include "petal/units/unitOptions.h"
#include "source/TracedText.h"
#include "source/makeQuidMap.h"
#include "source/makeSourceMap.h"

#include <algorithm>
#include <cstdio>
#include <deque>
#include <filesystem>
#include <memory>
#include <unistd.h>
#include <utility>

namespace petal {

namespace {

class Count final : public KelTraversalOperation {
public:
    void post_process(KelObject* /*object*/, void* /*userData*/) override { ++objects; }

    std::uint64_t objects = 0;
};

} // namespace

std::uint64_t countObjects(KelModel& model) {
    Count count;
    model._depthTraversal(count, nullptr);
    return count.objects;
}

namespace {

/// The model of an import. The last one of a process is never deleted: the end of the process frees a large model at no
/// cost.
class ImportedModel {
public:
    explicit ImportedModel(bool isLast) : isLast_(isLast), model_(std::make_unique<KelModel>()) {}
    ImportedModel(const ImportedModel&) = delete;
    ImportedModel& operator=(const ImportedModel&) = delete;
    ~ImportedModel() {
        if (isLast_) {
            delete std::exchange(last_, model_.release()); // a program that calls petal's functions may import again
        }
    }

    [[nodiscard]] KelModel& get() const { return *model_; }

private:
    static inline KelModel* last_ = nullptr;

    bool isLast_;
    std::unique_ptr<KelModel> model_;
};

/// The units of a model are known only now. No file has been opened for writing yet, which could empty one.
void refuseToLoseUnits(const units::UnitTree& tree, const FileUses& uses) {
    for (const units::ResolvedFile& file : tree.files) {
        uses.refuseToLose(file.path.string());
    }
}

void import(const ImportRequest& request, KelModel& model, KelOptionList& options,
            KelModelBridgeImportDllInterface& bridge, KelLog& log) {
    try {
        bridge.run(PlugIn::bridgeId, model, options, log);
    } catch (const KelException& failure) {
        throw Failure(Outcome::importFailed, std::string(failure.getMessage().view()), importAdvice(request.file));
    }
}

/// Removes the texts from the model that come from its file's path.
void forgetPath(KelModel& model) {
    model.setName("");
    for (KelMetadataOrigin* origin : model.metadataOrigins()) {
        origin->sourcePath = "";
    }
}

using Need = bool (*exporter::Exporter::*)(const exporter::OptionValues& options);

/// Whether one of the formats needs it.
bool isAnyDestination(const ImportRequest& request, Need need) {
    return std::ranges::any_of(request.destinations, [&](const Destination& destination) {
        const exporter::Exporter& exporter = *exporter::findExporter(destination.format);
        return exporter.*need != nullptr && (exporter.*need)(formatOptions(request, exporter));
    });
}

/// Whether one of the formats shows where the objects of the model come from.
bool needsSource(const ImportRequest& request) {
    if (!isAnyDestination(request, &exporter::Exporter::needsSource)) {
        return false;
    }
    if (::access(request.file.c_str(), F_OK) == 0 && !std::filesystem::is_regular_file(request.file)) {
        throw Failure(Outcome::wrongUsage,
                      "'" + request.file + "' cannot be read a second time, which the places of objects need",
                      "Save it as a file first.");
    }
    return true;
}

/// The inputs of the formats. Null or empty for what none of them needs.
struct Knowledge {
    KelModel& model;
    exporter::FindSource findPlaces;
    const exporter::DrawnPositions* positions = nullptr;
    const layout::NotationTree* notation = nullptr;
    const ledger::KeptLedger* ledger = nullptr;
    std::uint64_t objects = 0;
};

/// The model in one form. It becomes final with `commit`, after every form has been written.
class WrittenModel {
public:
    /// Writes it. Throws a `Failure`.
    WrittenModel(const ImportRequest& request, const Destination& destination, const Knowledge& knowledge)
        : destination_(destination) {
        const exporter::Exporter& exporter = *exporter::findExporter(destination.format);
        const exporter::OptionValues options = formatOptions(request, exporter);
        const std::string ending = exporter::endingOf(destination.path.value_or(""));
        attempt(destination.path, [&] { files_.emplace(destination.path, destination.descriptor); });
        if (destination.beside) {
            attempt(destination.beside, [&] { files_->addBeside(*destination.beside, destination.besideDescriptor); });
        }
        attempt(destination.path, [&] {
            exporter.write({.model = knowledge.model,
                            .findSource = knowledge.findPlaces,
                            .options = options,
                            .folder = *files_,
                            .omissions = omissions_,
                            .ending = ending,
                            .positions = knowledge.positions,
                            .notation = knowledge.notation,
                            .ledger = knowledge.ledger,
                            .objects = knowledge.objects});
        });
    }

    /// Called once. Throws a `Failure`.
    void commit() {
        attempt(destination_.path, [&] { files_->commit(); });
    }
    [[nodiscard]] const std::string& getFormat() const { return destination_.format; }
    [[nodiscard]] const exporter::Omissions& getOmissions() const { return omissions_; }

private:
    template <class Step>
    void attempt(const std::optional<std::string>& path, Step step) const {
        try {
            step();
        } catch (const exporter::WrongOption& error) { // the model lacks what an option names
            throw wrongOption(destination_.format, error);
        } catch (const std::system_error& error) {
            throw outputFailure(outputName(path), error);
        }
    }

    const Destination& destination_;
    std::optional<OutputFiles> files_;
    exporter::Omissions omissions_;
};

/// The lines about a form that was written.
TextLines notesOn(const std::string& format, const exporter::Omissions& omissions) {
    TextLines lines;
    for (const std::string& remark : omissions.getRemarks()) {
        lines.push_back(std::string(format).append(": ").append(remark));
    }
    if (!omissions.isEmpty()) {
        lines.push_back(format + ": left out: " + omissions.summary());
    }
    return lines;
}

/// Returns how much of the model the forms lack.
std::uint64_t writeModel(const ImportRequest& request, const ModelSource& source, Knowledge knowledge,
                         const OmissionTaker& take) {
    std::optional<exporter::DrawnPositions> positions;
    if (knowledge.findPlaces && isAnyDestination(request, &exporter::Exporter::needsPositions)) {
        const source::SourceMap& places = *knowledge.findPlaces();
        positions = readAgain(request.file, "the positions of classes",
                              [&] { return findPositions(source.getTree(), knowledge.model, places); });
        knowledge.positions = &*positions;
    }
    std::optional<layout::NotationTree> notation;
    if (knowledge.ledger != nullptr && knowledge.notation == nullptr) {
        readAgain(request.file, "its diagrams", [&] { notation.emplace(source.getTree()); });
        knowledge.notation = &*notation;
    }

    std::deque<WrittenModel> forms;
    for (const Destination& destination : request.destinations) {
        forms.emplace_back(request, destination, knowledge);
    }
    std::ranges::for_each(forms, &WrittenModel::commit);
    std::uint64_t omitted = 0;
    for (const WrittenModel& form : forms) {
        const exporter::Omissions& omissions = form.getOmissions();
        omitted += omissions.getTotal();
        if (take && !omissions.isEmpty()) {
            take(form.getFormat(), omissions);
        }
        if (request.isSummarised) {
            std::fputs(asNotes(notesOn(form.getFormat(), omissions)).c_str(), stderr);
        }
    }
    return omitted;
}

void countUnits(const units::UnitTree& tree, ImportResult& result) {
    for (const units::ResolvedFile& file : tree.files) {
        for (const units::Unit& unit : file.units) {
            ++(units::isLost(unit) ? result.unitsMissing : result.unitsFound);
        }
    }
}

/// Maps the path symbols that the request leaves to petal.
void mapSymbols(const ImportRequest& request, units::UnitLocator& locator) {
    units::SymbolSearch search({}, {units::folderOf(request.file)});
    const std::vector<units::SymbolFolder> mapped = units::mapSymbols(locator, search, [&] {
        units::LostUnits lost;
        lost.add(units::lossesOf(readModelTree(request, locator), locator.getSymbols()));
        return lost;
    });
    if (request.isSummarised) {
        std::fputs(asNotes(mappingLines(mapped)).c_str(), stderr);
    }
}

/// 0 if it cannot be told.
std::uint64_t sizeOf(const std::filesystem::path& file) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    return error ? 0 : size;
}

} // namespace

ImportResult importModel(const ImportRequest& request, const ImportContext& context) {
    const PlugIn plugIn = PlugIn::load();
    const ImportedModel imported(context.isLast);
    KelModel& model = imported.get();
    KelOptionList options;
    plugIn.getBridge().getOptionList(options);
    setImportOptions(request, options);
    if (mapsAutomatically(request.units)) {
        mapSymbols(request, context.locator);
    }
    const ModelSource source(request, context.locator, context.takeTree);
    refuseToLoseUnits(source.getTree(), context.uses);
    source.setOptions(options);
    const bool isLedgerShown = isAnyDestination(request, &exporter::Exporter::needsFiles);
    LedgerReport ledger(request, isLedgerShown);
    LogWriter writer(request.log, *findLogFormat(request.logFormat), chosenEncoding(options));
    if (!request.areUnitsTold) {
        writer.leaveOut(ModelSource::missingUnitCode);
    }
    WarningCount log(writer, severityLevel(KelString(std::string_view(request.logLevel))));
    source.reportTo(log);
    std::optional<source::Trace> trace;
    const bool isPlaced = needsSource(request);
    const bool needsPlaces = isAnyDestination(request, &exporter::Exporter::needsPlaces);
    const bool needsSteps = ledger.isWanted() || context.takeModel;
    const bool needsAllSteps =
        needsPlaces || ledger.isWanted() || (context.takeModel && context.steps == source::Steps::all);
    if (isPlaced || needsSteps) {
        trace.emplace(needsAllSteps ? source::Steps::all : source::Steps::makings,
                      sizeOf(source.getTree().files.front().path));
    }
    import(request, model, options, plugIn.getBridge(), log);
    source.complete(model, options);
    if (!request.namesFile) {
        forgetPath(model);
    }
    if (trace) {
        trace->locate(source.getPieces());
    }
    if (context.takeModel) {
        context.takeModel({model, source, *trace, chosenEncoding(options)});
    }
    std::optional<source::SourceMap> places;
    std::optional<layout::NotationTree> notation;
    const units::UnitTree& tree = source.getTree();
    const auto makeLedger = [&](const ledger::BeginReading& begin = {}) {
        ledger.make(source, *trace, model, chosenEncoding(options), begin);
    };
    const bool isReadOnce = isLedgerShown && isPlaced && needsPlaces && tree.files.size() == 1 && ledger.isWanted();
    if (isReadOnce) {
        notation.emplace(tree, [&](notation::Listener& loader) {
            std::optional<source::SourceMapMaker> maker;
            makeLedger([&](source::TracedText& text) {
                text.add(maker.emplace(tree, *trace, model, text));
                text.add(loader);
            });
            places = maker->finish();
        });
    }
    const auto findPlaces = [&]() -> const source::SourceMap* {
        if (!places) {
            const auto make = needsPlaces ? source::makeSourceMap : source::makeQuidMap;
            places = readAgain(request.file, "the places of objects", [&] { return make(tree, *trace, model); });
            if (!needsSteps) {
                trace.reset();
            }
        }
        return &*places;
    };
    if (isLedgerShown && !isReadOnce) {
        makeLedger();
    }
    const std::optional<ledger::KeptLedger> kept = ledger.getKept();
    ImportResult result;
    result.objects = request.areObjectsCounted || isLedgerShown ? countObjects(model) : 0;
    const Knowledge knowledge{.model = model,
                              .findPlaces = isPlaced ? exporter::FindSource(findPlaces) : nullptr,
                              .notation = notation ? &*notation : nullptr,
                              .ledger = kept ? &*kept : nullptr,
                              .objects = result.objects};
    result.omitted = writeModel(request, source, knowledge, context.takeOmissions);
    if (trace && !isLedgerShown) {
        makeLedger();
    }
    writer.close();
    result.outcome = ledger.check(log.getCount(), result.omitted);
    result.dropped = ledger.getDropped();
    result.losses = ledger.getLosses();
    countUnits(source.getTree(), result);
    result.events = writer.getCounts();
    return result;
}

} // namespace petal
