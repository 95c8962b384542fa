#pragma once

#include "petal/Request.h"
#include "units/PieceMap.h"
#include "units/RootPackage.h"
#include "units/UnitTree.h"

#include <functional>
#include <optional>
#include <string>

class KelLog;
class KelModel;
class KelOptionList;
class KelString;

namespace petal {

/// Opens an empty file without a name, in the folder for temporary files, for reading and writing. The caller closes
/// it, and with that it is gone, however the program ends. It can be opened again under /proc/self/fd. Throws
/// `std::system_error`.
[[nodiscard]] int openNamelessFile();

/// Called with the tree of a model's files once its units have been searched for.
using TreeTaker = std::function<void(const units::UnitTree& tree)>;

/// The files of the request's model: only the file itself when its units are to be skipped, or when it cannot be read.
/// Does not throw then: the bridge reports the failure.
[[nodiscard]] units::UnitTree readModelTree(const ImportRequest& request, units::UnitLocator& locator);

/// The text that the bridge reads: the model file itself or, when it differs from that (units, another root, a lone
/// package), an assembled text in a file without a name, which this object owns.
class ModelSource {
public:
    /// Reads the units of the request's file and assembles the text. A file that cannot be read, or is not a model
    /// file, is left to the bridge. `takeTree` may be empty; it is called before anything is refused. `request` must
    /// live as long. Throws a `Failure`, with the outcome `unitMissing` when a required unit is missing.
    ModelSource(const ImportRequest& request, units::UnitLocator& locator, const TreeTaker& takeTree = {});
    ModelSource(const ModelSource&) = delete;
    ModelSource& operator=(const ModelSource&) = delete;
    ~ModelSource();

    /// The code of the warnings about missing units.
    static constexpr const char* missingUnitCode = "PETAL_W0001";

    /// Sets the file that the bridge reads and, for the encoding "auto", the encoding that the header's charSet means,
    /// if any.
    void setOptions(KelOptionList& options) const;
    /// Records a warning for every unit whose content is not in the model, and a status event when the root of the
    /// packages was renamed for the bridge.
    void reportTo(KelLog& log) const;
    /// Undoes in the imported model what the assembled text changed: the model's name and origin, the name of its root
    /// package, and the package around a lone one.
    void complete(KelModel& model, const KelOptionList& options) const;

    /// The files of the model; only the model file when units are skipped.
    [[nodiscard]] const units::UnitTree& getTree() const { return tree_; }
    /// The origins of the assembled text's bytes; null when the bridge reads the model file itself.
    [[nodiscard]] const units::PieceMap* getPieces() const { return descriptor_ >= 0 ? &pieces_ : nullptr; }
    /// The root of the packages if it was renamed for the bridge, else null.
    [[nodiscard]] const units::RenamedRoot* getRenamedRoot() const { return renamedRoot_ ? &*renamedRoot_ : nullptr; }
    /// Whether each file was read in the encoding that its own charSet means.
    [[nodiscard]] bool hasEncodingByFile() const { return isUtf8_; }

private:
    void assemble();
    [[nodiscard]] std::string logText(const std::string& bytes, std::size_t file) const;
    void reportLost(const units::Unit& unit, std::size_t file, KelLog& log) const;
    void reportRenamed(const units::RenamedRoot& root, KelLog& log) const;
    void giveBackName(KelModel& model, const KelString& encoding) const;

    const ImportRequest& request_;
    units::UnitTree tree_;
    int descriptor_ = -1; // of the assembled text
    units::PieceMap pieces_;
    std::optional<units::RenamedRoot> renamedRoot_; // in that text
    bool isWrapped_ = false;
    bool isUtf8_ = false; // the assembled text is, whatever the files are
};

} // namespace petal
