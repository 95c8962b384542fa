#include "petal/import/ModelSource.h"

#include "host/encoding/KelTextDecoder.h"
#include "host/encoding/charSetEncoding.h"
#include "host/encoding/localeText.h"
#include "host/log/KelLog.h"
#include "host/log/Severity.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/options/KelOptionList.h"
#include "notation/unescaped.h"
#include "petal/Failure.h"
#include "petal/import/importOptions.h"
#include "petal/output/Descriptor.h"
#include "petal/output/fileFailure.h"
#include "units/Assembly.h"
#include "units/localText.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace petal {

namespace {

constexpr mode_t ownerOnly = 0600;

} // namespace

int openNamelessFile() {
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    int descriptor = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, ownerOnly);
    if (descriptor < 0) { // not every file system has such files
        std::string path = folder / "petalXXXXXX";
        descriptor = ::mkostemp(path.data(), O_CLOEXEC);
        if (descriptor < 0) {
            throwErrno();
        }
        ::unlink(path.c_str());
    }
    return descriptor;
}

namespace {

/// An assembled text on its way to a file without a name: in memory if it is small, else in the folder for temporary
/// files, since it may have any size.
class NamelessText {
public:
    NamelessText() = default;
    NamelessText(const NamelessText&) = delete;
    NamelessText& operator=(const NamelessText&) = delete;

    /// Throws `std::system_error`.
    void write(std::string_view part) {
        begun_ += part;
        if (file_.isOpen() || begun_.size() > largestInMemory) {
            flush([] { return openNamelessFile(); });
        }
    }
    /// Returns the descriptor, which the caller closes. Called once, as the last operation. Throws
    /// `std::system_error`.
    int finish() {
        flush([] {
            const int descriptor = ::memfd_create("petal", MFD_CLOEXEC);
            return descriptor < 0 ? openNamelessFile() : descriptor;
        });
        return file_.release();
    }

private:
    static constexpr std::size_t largestInMemory = 1'000'000;

    template <class Open>
    void flush(Open open) {
        if (!file_.isOpen()) {
            file_ = Descriptor(open());
        }
        writeFully(file_.get(), begun_);
        begun_.clear();
    }

    std::string begun_;
    Descriptor file_;
};

constexpr const char* renamedRootCode = "PETAL_S0002";

bool isRegularFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// Reads a model to its end only if it has units, is a unit, or has a root of another name.
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

/// Removes the package that was put around a lone one for the bridge, and moves its contents to the model.
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
    units::UnitTree tree;
    tree.files.push_back({request.file, 0, {}, {}});
    if (!isRegularFile(request.file)) {
        return tree;
    }
    try {
        if (request.units.mode != "skip") {
            return readTree(request.file, locator);
        }
        tree.files[0].contents = units::readUnitFile(request.file, units::Extent::headAndKind);
    } catch (const std::system_error&) { // the bridge reports it
    }
    return tree;
}

ModelSource::ModelSource(const ImportRequest& request, units::UnitLocator& locator, const TreeTaker& takeTree)
    : request_(request), tree_(readModelTree(request, locator)) {
    if (takeTree) {
        takeTree(tree_);
    }
    if (request_.units.mode == "require" && !tree_.isComplete()) {
        throw Failure(Outcome::unitMissing, "controlled units of '" + request_.file + "' are missing",
                      "'petal units' lists them; --path-map and --unit-dir say where to search.");
    }
    const bool mayDiffer = request_.units.mode != "skip" && tree_.files[0].contents.isModel;
    if (mayDiffer && units::Assembly(tree_).differs()) {
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
        NamelessText text;
        pieces_ = assembly.write(isUtf8_ ? units::Assembly::Bytes::utf8IfMixed : units::Assembly::Bytes::asTheyAre,
                                 [&](std::string_view part) { text.write(part); });
        descriptor_ = text.finish();
    } catch (const std::system_error& error) {
        throw outputFailure("the temporary copy of '" + request_.file + "' with its controlled units", error);
    }
}

void ModelSource::setOptions(KelOptionList& options) const {
    if (descriptor_ >= 0) {
        setSource(options, "/proc/self/fd/" + std::to_string(descriptor_));
    }
    if (request_.encoding == "auto") {
        const units::UnitFile& model = tree_.files[0].contents;
        const char* encoding = isUtf8_ ? "UTF-8" : model.isHeaderClosed ? charSetEncoding(model.charSet) : nullptr;
        if (encoding != nullptr) {
            setEncoding(options, encoding);
        }
    }
}

/// Converts bytes of a file to the encoding that the log expects.
std::string ModelSource::logText(const std::string& bytes, std::size_t file) const {
    return isUtf8_ ? KelTextDecoder(units::encodingOf(tree_.files[file].contents.charSet)).toUtf8(bytes) : bytes;
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
    KelTextDecoder decoder(isUtf8_ ? KelString(units::encodingOf(tree_.files[renamedRoot_->file].contents.charSet))
                                   : encoding);
    root->setName(KelString(decoder.toUtf8(notation::unescaped(renamedRoot_->head.name))));
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
