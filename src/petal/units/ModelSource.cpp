#include "petal/units/ModelSource.h"

#include "host/encoding/localeText.h"
#include "host/log/KelLog.h"
#include "host/log/Severity.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/options/KelOptionList.h"
#include "petal/Failure.h"
#include "petal/importOptions.h"
#include "petal/outputFailure.h"
#include "petal/units/namelessFile.h"
#include "petal/units/unitOptions.h"
#include "petal/writeFully.h"
#include "units/Assembly.h"
#include "units/localText.h"

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace petal {

namespace {

constexpr const char* missingUnitCode = "PETAL_W0001";

bool isRegularFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// Only a model that has units, or is one, needs to be read for them.
units::UnitTree readTree(const std::string& path, units::UnitLocator& locator) {
    if (!units::mayHoldReferences(path)) {
        units::UnitTree tree;
        tree.files.push_back({path, 0, units::readUnitFile(path, units::Extent::headAndKind), {}});
        if (!units::Assembly(tree).isWrapped()) {
            return tree;
        }
    }
    return units::readUnitTree(path, locator);
}

/// The package that a lone one was put into, for the bridge to take it, gives its contents to the model.
void unwrap(KelModel& model) {
    KelPackage* wrapping = model.childPackages().first();
    std::vector<KelPackage*> wrapped;
    for (KelPackage* package : wrapping->childPackages()) {
        wrapped.push_back(package);
    }
    for (KelPackage* package : wrapped) {
        package->removeAggregationAssembly();
        model.addChildPackage(package);
    }
    delete wrapping;
}

} // namespace

ModelSource::ModelSource(const ImportRequest& request) : request_(request) {
    tree_.files.push_back({request.file, 0, {}, {}});
    if (request.units.mode != "skip" && isRegularFile(request.file)) {
        follow();
    }
}

ModelSource::~ModelSource() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

void ModelSource::follow() {
    units::UnitLocator locator = makeUnitLocator(request_.units);
    try {
        tree_ = readTree(request_.file, locator);
    } catch (const std::system_error&) {
        return; // the bridge says what is wrong
    }
    if (request_.units.mode == "require" && !tree_.isComplete()) {
        throw Failure(Outcome::unitMissing, "controlled units of '" + request_.file + "' are missing",
                      "'petal units' tells which; --path-map and --unit-dir say where to look for them.");
    }
    if (units::Assembly(tree_).differs() && tree_.files[0].contents.isModel) {
        assemble();
    }
}

void ModelSource::assemble() {
    const units::Assembly assembly(tree_);
    isWrapped_ = assembly.isWrapped();
    isUtf8_ = request_.encoding == "auto" && assembly.isMixed();
    try {
        descriptor_ = openNamelessFile();
        pieces_ = assembly.write(isUtf8_ ? units::Assembly::Bytes::utf8IfMixed : units::Assembly::Bytes::asTheyAre,
                                 [this](std::string_view part) { writeFully(descriptor_, part); });
    } catch (const std::system_error& error) {
        throw outputFailure("the temporary copy of '" + request_.file + "' with its controlled units", error);
    }
}

void ModelSource::setOptions(KelOptionList& options) const {
    if (descriptor_ >= 0) {
        setSource(options, "/proc/self/fd/" + std::to_string(descriptor_), isUtf8_ ? "UTF-8" : nullptr);
    }
}

void ModelSource::reportTo(KelLog& log) const {
    const int severity = severityLevel("WARNING");
    if (!log.accepts(severity)) {
        return;
    }
    for (const units::ResolvedFile& file : tree_.files) {
        for (const units::Unit& unit : file.units) {
            if (!isLost(unit)) {
                continue;
            }
            const auto text = [&](const std::string& bytes) { // in the encoding that the log expects
                return isUtf8_ ? units::localText(bytes, file.contents.charSet) : bytes;
            };
            const std::string message = "Controlled unit " + text(unit.reference.name) + " (line " +
                                        std::to_string(unit.reference.place.line) + ") is not read: " + unit.remark +
                                        ": " + text(unit.reference.fileName);
            log.record(KelLogEvent(KelString(std::string_view(message)), missingUnitCode, severity, ""));
        }
    }
}

void ModelSource::complete(KelModel& model, const KelOptionList& options) const {
    if (descriptor_ < 0) {
        return;
    }
    const KelString path{std::string_view(request_.file)};
    const KelString encoding = chosenEncoding(options);
    model.setName(computeNameFromPath(path, encoding == "unknown" ? encoding : KelString("UTF-8")));
    for (KelMetadataOrigin* origin : model.metadataOrigins()) {
        origin->sourcePath = path;
    }
    if (isWrapped_ && !model.childPackages().isEmpty()) {
        unwrap(model);
    }
}

} // namespace petal
