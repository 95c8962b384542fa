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

/// Opens an empty file for reading and writing that has no name, in the folder for temporary files, and is gone once
/// it is closed, however the program ends. It can be opened again under /proc/self/fd. The caller closes it. Throws
/// `std::system_error`.
[[nodiscard]] int openNamelessFile();

/// Called with a model and its units as soon as these have been looked for.
using TreeTaker = std::function<void(const units::UnitTree& tree)>;

/// The files of the request's model: the file alone when its units are not to be followed, or when it cannot be read.
[[nodiscard]] units::UnitTree readModelTree(const ImportRequest& request, units::UnitLocator& locator);

/// What the bridge is given to read: the model file itself, or, when the contents of controlled units belong in it, a
/// file without a name that holds all of them as one text.
class ModelSource {
public:
    /// Follows the units of the request's file as the request says. A file that is no readable model file is left to
    /// the bridge. `takeTree`, unless it is empty, hears of them, even of those that are required and missing: then a
    /// `Failure` with the outcome `unitMissing` is thrown. Throws other `Failure`s. `request` must live as long.
    ModelSource(const ImportRequest& request, units::UnitLocator& locator, const TreeTaker& takeTree = {});
    ModelSource(const ModelSource&) = delete;
    ModelSource& operator=(const ModelSource&) = delete;
    ~ModelSource();

    /// The code of the warnings of missing units.
    static constexpr const char* missingUnitCode = "PETAL_W0001";

    /// Has the bridge read this source, for the encoding "auto" in the one that the header means, if it means one.
    void setOptions(KelOptionList& options) const;
    /// Warns of every unit whose content is not in the model, and says when the root of the packages has another name
    /// than the bridge wants.
    void reportTo(KelLog& log) const;
    /// Gives the imported model the name and the origin of the file that was asked for, and its packages theirs.
    void complete(KelModel& model, const KelOptionList& options) const;

    /// The files that the model is in; just the file itself when no units were followed.
    [[nodiscard]] const units::UnitTree& getTree() const { return tree_; }
    /// Where the bytes of the text that the bridge reads come from; null when it reads the model file itself.
    [[nodiscard]] const units::PieceMap* getPieces() const { return descriptor_ >= 0 ? &pieces_ : nullptr; }
    /// The root of the packages when the bridge was given it under another name than it has; null when it was not.
    [[nodiscard]] const units::RenamedRoot* getRenamedRoot() const { return renamedRoot_ ? &*renamedRoot_ : nullptr; }
    /// Whether each of these files is in the encoding that its own charSet means.
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
