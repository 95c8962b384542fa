#include "units/UnitTree.h"

#include "units/localText.h"

#include <algorithm>
#include <limits>
#include <map>
#include <system_error>

namespace units {

namespace fs = std::filesystem;

namespace {

constexpr std::uint64_t toTheEnd = std::numeric_limits<std::uint64_t>::max();

/// A path that all paths of the same file share.
fs::path identityOf(const fs::path& path) {
    std::error_code error;
    fs::path canonical = fs::canonical(path, error);
    return error ? path : canonical;
}

/// The reason why a file cannot be the content of a unit of that kind, if any.
UnitFault refusalOf(const UnitFile& file, const std::string& kind) {
    if (!file.isModel) {
        return UnitFault::noModel;
    }
    return file.kind != kind ? UnitFault::otherKind : UnitFault::none;
}

void refuse(Unit& unit, UnitFault fault) {
    unit.fault = fault;
    unit.remark = fault == UnitFault::noModel ? "the file is no model file" : "the file holds another kind of object";
}

class TreeReader {
public:
    explicit TreeReader(UnitLocator& locator) : locator_(locator) {}

    UnitTree read(const fs::path& model) {
        add({model, 0, readModel(model), {}});
        while (!open_.empty()) {
            const std::size_t index = open_.back();
            ResolvedFile& file = tree_.files[index];
            if (file.units.size() == file.contents.references.size()) {
                isOpen_[index] = false;
                open_.pop_back();
            } else {
                const UnitReference& reference = file.contents.references[file.units.size()];
                file.units.emplace_back().reference = reference;
                resolve(index);
            }
        }
        return std::move(tree_);
    }

private:
    // The first reference to a file gets its content: it must be one that the import reads.
    static UnitFile readModel(const fs::path& path) {
        UnitFile model = readUnitFile(path, Extent::whole);
        dropReferencesOutside({model.content.begin, isLonePackage(model) ? model.content.end : toTheEnd}, model);
        return model;
    }

    static void dropReferencesOutside(const Range& part, UnitFile& file) {
        std::erase_if(file.references, [&](const UnitReference& reference) {
            return reference.range.begin < part.begin || reference.range.end > part.end;
        });
    }

    void add(ResolvedFile file) {
        known_.emplace(identityOf(file.path), tree_.files.size());
        open_.push_back(tree_.files.size());
        isOpen_.push_back(true);
        tree_.files.push_back(std::move(file));
    }

    // Resolves the last unit of the file. A file that is found is processed next.
    void resolve(std::size_t index) {
        ResolvedFile& file = tree_.files[index];
        Unit& unit = file.units.back();
        unit.name = parseUnitName(localText(unit.reference.fileName, file.contents.charSet));
        Located located = locator_.locate(unit.name, folderOf(file.path), folderOf(tree_.files[0].path));
        unit.remark = std::move(located.remark);
        unit.fault = located.fault;
        unit.isWhereNamed = located.isWhereNamed;
        if (!located.file) {
            return;
        }
        unit.path = *located.file;
        const fs::path identity = identityOf(unit.path);
        if (const auto known = known_.find(identity); known != known_.end()) {
            unit.file = known->second;
            unit.state = isOpen_[known->second] ? UnitState::cycle : UnitState::repeated;
            unit.fault = isOpen_[known->second] ? UnitFault::cycle : UnitFault::none;
            unit.remark = unit.state == UnitState::cycle ? "it stands in itself" : "its content stands further up";
            return;
        }
        take(index, unit, identity);
    }

    void take(std::size_t index, Unit& unit, const fs::path& identity) {
        unit.state = UnitState::unusable;
        if (const auto refused = refused_.find(identity); refused != refused_.end()) {
            if (const UnitFault fault = refusalOf(refused->second, unit.reference.kind); fault != UnitFault::none) {
                refuse(unit, fault);
                return;
            }
        }
        ResolvedFile found{unit.path, index, {}, {}};
        try {
            found.contents = readUnitFile(unit.path, Extent::whole);
        } catch (const std::system_error& error) {
            unit.fault = UnitFault::unreadable;
            unit.remark = std::string(unreadableRemark) + error.code().message();
            return;
        }
        if (const UnitFault fault = refusalOf(found.contents, unit.reference.kind); fault != UnitFault::none) {
            refuse(unit, fault);
            found.contents.references.clear();
            refused_.emplace(identity, std::move(found.contents));
            return;
        }
        // The rest of the file does not get into the model.
        dropReferencesOutside(found.contents.content, found.contents);
        unit.state = UnitState::found;
        unit.file = tree_.files.size();
        add(std::move(found)); // moves the files, and `unit` with them
    }

    UnitLocator& locator_;
    UnitTree tree_;
    std::map<fs::path, std::size_t> known_;
    std::map<fs::path, UnitFile> refused_; // without references; avoids reading a file each time it is named
    std::vector<bool> isOpen_;             // by file: it is in `open_`
    std::vector<std::size_t> open_;        // files whose units are being resolved, the innermost last
};

} // namespace

bool isLost(const Unit& unit) {
    return unit.state != UnitState::found && unit.state != UnitState::repeated;
}

bool UnitTree::isComplete() const {
    return std::ranges::none_of(files,
                                [](const ResolvedFile& file) { return std::ranges::any_of(file.units, isLost); });
}

UnitTree readUnitTree(const fs::path& model, UnitLocator& locator) {
    return TreeReader(locator).read(model);
}

} // namespace units
