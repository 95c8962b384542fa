#include "assemblyFault.h"

#include "textFault.h"
#include "units/Assembly.h"

#include <fstream>
#include <iterator>
#include <set>

namespace fuzz {

namespace {

using units::Range;
using units::Unit;
using units::UnitState;
using units::UnitTree;

constexpr std::string_view closing = "\n\tlogical_presentations \t(list unit_reference_list)";

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A part of a file with the contents of the units in it.
std::string assembledSlowly(const UnitTree& tree, std::size_t file, const Range& range) {
    std::string text = contentsOf(tree.files[file].path).substr(range.begin, range.end - range.begin);
    const std::vector<Unit>& units = tree.files[file].units;
    for (auto unit = units.rbegin(); unit != units.rend(); ++unit) {
        const Range& place = unit->reference.range;
        if (place.begin < range.begin || place.end > range.end) {
            continue;
        }
        const std::size_t begin = place.begin - range.begin;
        const std::size_t length = place.end - place.begin;
        if (unit->state == UnitState::found) {
            text.replace(begin, length, assembledSlowly(tree, unit->file, tree.files[unit->file].contents.content));
        } else if (unit->reference.kind == "Class_Category") {
            text.insert(begin + length - (unit->reference.isClosed ? 1 : 0), closing);
        }
    }
    return text;
}

std::string assembled(const units::Assembly& assembly, units::Assembly::Bytes bytes) {
    std::string text;
    assembly.write(bytes, [&](std::string_view piece) { text += piece; });
    return text;
}

/// What is wrong with the text of a package that is put into a logical view.
std::string wrappedFault(const UnitTree& tree, const std::string& text) {
    const Range& content = tree.files[0].contents.content;
    if (!text.starts_with(contentsOf(tree.files[0].path).substr(0, content.begin))) {
        return "a package is wrapped with another head";
    }
    const bool isIn = text.find(assembledSlowly(tree, 0, content), content.begin) != std::string::npos;
    return isIn ? "" : "a wrapped package is another one";
}

} // namespace

std::string treeFault(const UnitTree& tree) {
    std::set<std::filesystem::path> paths;
    std::set<std::size_t> wanted;
    std::size_t found = 0;
    for (const units::ResolvedFile& file : tree.files) {
        if (!paths.insert(std::filesystem::canonical(file.path)).second) {
            return "a file is there twice";
        }
        if (file.units.size() != file.contents.references.size()) {
            return "a reference without its unit";
        }
        for (const Unit& unit : file.units) {
            if (unit.file >= tree.files.size()) {
                return "a unit of a file that is not there";
            }
            if (unit.state == UnitState::found) {
                wanted.insert(unit.file);
                ++found;
            }
        }
    }
    const bool isOneEach = found + 1 == tree.files.size() && wanted.size() == found && !wanted.contains(0);
    return isOneEach ? "" : "not one unit for each file";
}

std::string assemblyFault(const UnitTree& tree) {
    const units::Assembly assembly(tree);
    const std::string text = assembled(assembly, units::Assembly::Bytes::asTheyAre);
    const std::string inOneEncoding = assembled(assembly, units::Assembly::Bytes::utf8IfMixed);
    if (assembly.isMixed()) {
        if (std::string fault = utf8Fault(inOneEncoding); !fault.empty()) {
            return fault;
        }
    } else if (inOneEncoding != text) {
        return "files in one encoding are brought to another";
    }
    if (assembly.isWrapped()) {
        return wrappedFault(tree, text);
    }
    return text == assembledSlowly(tree, 0, {0, std::string::npos}) ? "" : "another text is assembled";
}

} // namespace fuzz
