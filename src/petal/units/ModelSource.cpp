#include "petal/units/ModelSource.h"

#include "host/encoding/localeText.h"
#include "host/log/KelLog.h"
#include "host/log/Severity.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/options/KelOptionList.h"
#include "notation/unescaped.h"
#include "petal/Failure.h"
#include "petal/importOptions.h"
#include "petal/outputFailure.h"
#include "petal/units/namelessFile.h"
#include "petal/writeFully.h"
#include "units/Assembly.h"
#include "units/localText.h"

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace petal {

namespace {

constexpr const char* renamedRootCode = "PETAL_S0002";

bool isRegularFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// Only a model that has units, is one, or has a root of another name needs to be read to its end.
units::UnitTree readTree(const std::string& path, units::UnitLocator& locator) {
    if (!units::mayNeedAssembly(path)) {
        units::UnitTree tree;
        tree.files.push_back({path, 0, units::readUnitFile(path, units::Extent::headAndKind), {}});
        if (!units::Assembly(tree).isWrapped()) {
            return tree;
        }
    }
    return units::readUnitTree(path, locator);
}

void record(KelLog& log, const char* code, const char* severity, const std::string& message) {
    log.record(KelLogEvent(KelString(std::string_view(message)), code, severityLevel(severity), ""));
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

units::UnitTree readModelTree(const ImportRequest& request, units::UnitLocator& locator) {
    if (request.units.mode != "skip" && isRegularFile(request.file)) {
        try {
            return readTree(request.file, locator);
        } catch (const std::system_error&) { // the bridge says what is wrong
        }
    }
    units::UnitTree tree;
    tree.files.push_back({request.file, 0, {}, {}});
    return tree;
}

ModelSource::ModelSource(const ImportRequest& request, units::UnitLocator& locator, const TreeTaker& takeTree)
    : request_(request), tree_(readModelTree(request, locator)) {
    if (takeTree) {
        takeTree(tree_);
    }
    if (request_.units.mode == "require" && !tree_.isComplete()) {
        throw Failure(Outcome::unitMissing, "controlled units of '" + request_.file + "' are missing",
                      "'petal units' tells which; --path-map and --unit-dir say where to look for them.");
    }
    if (tree_.files[0].contents.isModel && units::Assembly(tree_).differs()) {
        assemble();
    }
}

ModelSource::~ModelSource() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

void ModelSource::assemble() {
    const units::Assembly assembly(tree_);
    isWrapped_ = assembly.isWrapped();
    renamedRoot_ = assembly.getRenamedRoot();
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

/// Bytes of a file in the encoding that the log expects.
std::string ModelSource::logText(const std::string& bytes, std::size_t file) const {
    return isUtf8_ ? units::utf8Text(bytes, units::encodingOf(tree_.files[file].contents.charSet)) : bytes;
}

void ModelSource::reportLost(const units::Unit& unit, std::size_t file, KelLog& log) const {
    record(log, missingUnitCode, "WARNING",
           "Controlled unit " + logText(unit.reference.name, file) + " (line " +
               std::to_string(unit.reference.place.line) + ") is not read: " + unit.remark + ": " +
               logText(unit.reference.fileName, file));
}

void ModelSource::reportRenamed(const units::RenamedRoot& root, KelLog& log) const {
    record(log, renamedRootCode, "STATUS",
           "Root category " + logText(root.head.name, root.file) + " (line " + std::to_string(root.head.place.line) +
               ") is imported as the logical view");
}

void ModelSource::reportTo(KelLog& log) const {
    if (log.accepts(severityLevel("WARNING"))) {
        for (std::size_t file = 0; file < tree_.files.size(); ++file) {
            for (const units::Unit& unit : tree_.files[file].units) {
                if (isLost(unit)) {
                    reportLost(unit, file, log);
                }
            }
        }
    }
    if (renamedRoot_ && log.accepts(severityLevel("STATUS"))) {
        reportRenamed(*renamedRoot_, log);
    }
}

void ModelSource::giveBackName(KelModel& model, const KelString& encoding) const {
    KelPackage* root = model.childPackages().findNamed(KelString(units::logicalView));
    if (root == nullptr) {
        return;
    }
    const std::string_view own =
        isUtf8_ ? units::encodingOf(tree_.files[renamedRoot_->file].contents.charSet) : encoding.view();
    root->setName(KelString(std::string_view(units::utf8Text(notation::unescaped(renamedRoot_->head.name), own))));
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
    if (renamedRoot_) {
        giveBackName(model, encoding);
    }
    if (isWrapped_ && !model.childPackages().isEmpty()) {
        unwrap(model);
    }
}

} // namespace petal
