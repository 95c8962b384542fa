#include "assemblyFault.h"

#include "textFault.h"
#include "units/Assembly.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

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

/// Text that takes the place of a range of a file.
struct Replacement {
    Range place;
    std::string text;
};

std::string assembledSlowly(const units::Assembly& assembly, const UnitTree& tree, std::size_t file,
                            const Range& range);

std::vector<Replacement> replacementsIn(const units::Assembly& assembly, const UnitTree& tree, std::size_t file,
                                        const Range& range) {
    std::vector<Replacement> replacements;
    for (const Unit& unit : tree.files[file].units) {
        const Range& place = unit.reference.range;
        if (unit.state == UnitState::found) {
            replacements.push_back(
                {place, assembledSlowly(assembly, tree, unit.file, tree.files[unit.file].contents.content)});
        } else if (unit.reference.kind == units::packageKind) {
            const std::uint64_t end = place.end - (unit.reference.isClosed ? 1 : 0);
            replacements.push_back({{end, end}, std::string(closing)});
        }
    }
    if (const auto& root = assembly.getRenamedRoot()) {
        for (const Range& place : units::findPathsFrom(root->head.name, tree.files[file].path, range)) {
            replacements.push_back({place, std::string(units::logicalView)});
        }
        if (file == root->file) {
            replacements.push_back({root->head.nameRange, std::string(units::logicalView)});
        }
    }
    std::ranges::stable_sort(replacements, {}, [](const Replacement& each) { return each.place.begin; });
    return replacements;
}

/// A part of a file with the contents of the units in it.
std::string assembledSlowly(const units::Assembly& assembly, const UnitTree& tree, std::size_t file,
                            const Range& range) {
    const std::string contents = contentsOf(tree.files[file].path);
    std::string text;
    std::uint64_t at = range.begin;
    for (const Replacement& each : replacementsIn(assembly, tree, file, range)) {
        if (each.place.begin >= at && each.place.end <= range.end) { // and not within one in front of it
            text += contents.substr(at, each.place.begin - at) + each.text;
            at = each.place.end;
        }
    }
    return text + contents.substr(at, range.end - at);
}

struct Assembled {
    std::string text;
    units::PieceMap pieces;
};

Assembled assembled(const units::Assembly& assembly, units::Assembly::Bytes bytes) {
    Assembled made;
    made.pieces = assembly.write(bytes, [&](std::string_view part) { made.text += part; });
    return made;
}

/// What is wrong with what is told of where the bytes of a text come from.
std::string piecesFault(const UnitTree& tree, const Assembled& made) {
    std::vector<std::string> files;
    for (const units::ResolvedFile& file : tree.files) {
        files.push_back(contentsOf(file.path));
    }
    std::vector<std::uint64_t> ends(files.size());
    std::uint64_t end = 0;
    for (const units::Piece& piece : made.pieces.getPieces()) {
        if (piece.begin != end || piece.length == 0) {
            return "pieces are not adjacent";
        }
        end += piece.length;
        const std::uint64_t fileEnd = piece.offset + piece.fileLength;
        if (piece.file >= files.size() || fileEnd > files[piece.file].size() || piece.offset < ends[piece.file]) {
            return "a piece comes from bytes that are not there, or are taken already";
        }
        ends[piece.file] = fileEnd;
        const std::string_view there = std::string_view(files[piece.file]).substr(piece.offset, piece.fileLength);
        if (piece.isCopied && there != std::string_view(made.text).substr(piece.begin, piece.length)) {
            return "a copied piece is another text";
        }
        for (const std::uint64_t at : {piece.begin, end - 1}) {
            const auto [file, offset] = made.pieces.toFile(at);
            if (file != piece.file || offset < piece.offset || offset > fileEnd) {
                return "a byte leads to another piece";
            }
            const std::optional<std::uint64_t> back = made.pieces.toText(file, offset);
            if (piece.fileLength > 0 &&
                (!back || *back < piece.begin || *back >= end || (piece.isCopied && *back != at))) {
                return "a byte is not where it leads back to";
            }
        }
    }
    return end == made.text.size() ? "" : "pieces do not cover the text";
}

/// What is wrong with the text of a package that is put into a logical view.
std::string wrappedFault(const units::Assembly& assembly, const UnitTree& tree, const std::string& text) {
    const Range& content = tree.files[0].contents.content;
    if (!text.starts_with(contentsOf(tree.files[0].path).substr(0, content.begin))) {
        return "a package is wrapped with another head";
    }
    const bool isIn = text.find(assembledSlowly(assembly, tree, 0, content), content.begin) != std::string::npos;
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
    const Assembled asItIs = assembled(assembly, units::Assembly::Bytes::asTheyAre);
    const Assembled inOneEncoding = assembled(assembly, units::Assembly::Bytes::utf8IfMixed);
    for (const Assembled* each : {&asItIs, &inOneEncoding}) {
        if (std::string fault = piecesFault(tree, *each); !fault.empty()) {
            return fault;
        }
    }
    if (assembly.isMixed()) {
        if (std::string fault = utf8Fault(inOneEncoding.text); !fault.empty()) {
            return fault;
        }
    } else if (inOneEncoding.text != asItIs.text) {
        return "files in one encoding are brought to another";
    }
    if (assembly.isWrapped()) {
        return wrappedFault(assembly, tree, asItIs.text);
    }
    const bool isSame = asItIs.text == assembledSlowly(assembly, tree, 0, {0, std::string::npos});
    return isSame ? "" : "another text is assembled";
}

} // namespace fuzz
