#include "petal/jobs/importOne.h"

#include "petal/import/PlugIn.h"
#include "petal/jobs/ProcessPool.h"
#include "petal/output/Descriptor.h"
#include "petal/output/ModelOutput.h"
#include "petal/output/fileFailure.h"

namespace petal {

namespace {

/// Opens the file that the import writes and this process puts in place; null if the import writes to the path itself.
std::unique_ptr<TemporaryFile> openFile(const std::optional<std::string>& path) {
    if (!path || *path == "-" || namedDescriptor(*path) >= 0) {
        return nullptr;
    }
    try {
        auto file = fileToReplace(*path);
        if (!file) {
            return nullptr;
        }
        removeAbandoned(file->parent_path(), fewNames);
        return std::make_unique<TemporaryFile>(*file, TemporaryFile::Signal::leaves);
    } catch (const std::system_error& error) {
        throw outputFailure(outputName(path), error);
    }
}

EndedImport run(ImportTask task, const Limits& limits, const StopSignals& signals) {
    ProcessPool pool(limits, signals);
    pool.start(0, std::move(task));
    for (;;) {
        std::vector<EndedImport> ended = pool.wait(std::chrono::hours(1));
        if (!ended.empty()) {
            return std::move(ended.front());
        }
    }
}

void keep(TemporaryFile& file) {
    try {
        file.sync();
        file.takePlace();
        syncFolder(file.getFolder());
    } catch (const std::system_error& error) {
        throw outputFailure(outputName(file.getTarget()), error);
    }
}

} // namespace

ImportEnd importApart(const ImportRequest& request, const ImportContext& context, const Limits& limits) {
    static_cast<void>(PlugIn::load()); // in this process, which has no limits
    const StopSignals signals;
    ImportFiles files;
    for (const Destination& destination : request.destinations) {
        files.models.push_back(openFile(destination.path));
    }
    for (const Destination& destination : request.destinations) {
        if (destination.beside) {
            files.models.push_back(openFile(destination.beside));
        }
    }
    files.ledger = openFile(request.ledger);
    ImportTask task{.request = request,
                    .uses = &context.uses,
                    .locator = &context.locator,
                    .files = std::move(files),
                    .errors = {},
                    .log = {}};
    const EndedImport ended = run(std::move(task), limits, signals);
    for (TemporaryFile* file : ended.files.inOrder()) {
        if (ended.end.isDone()) {
            keep(*file);
        }
    }
    return ended.end;
}

ImportEnd importHere(const ImportRequest& request, const ImportContext& context) {
    try {
        return endWith(importModel(request, context));
    } catch (...) {
        return endWith(std::current_exception());
    }
}

} // namespace petal
