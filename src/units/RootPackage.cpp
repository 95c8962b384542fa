#include "units/RootPackage.h"

#include "notation/Reader.h"
#include "units/OpenFile.h"

#include <algorithm>
#include <array>

namespace units {

namespace {

using notation::Event;
using notation::EventKind;

constexpr std::string_view classViewKind = "ClassView";
constexpr std::size_t classViewPath = 1; // the index of the name; the first name is the kind of view
constexpr std::array<std::string_view, 3> pathKeys{"supplier", "type", "AssociationClass"};
constexpr std::string_view separator = "::";

bool isPathFrom(std::string_view root, std::string_view text) {
    return text.starts_with(root) && text.substr(root.size()).starts_with(separator);
}

/// The offset of the quoted path that begins in the event, if one does.
std::optional<std::uint64_t> pathFrom(std::string_view root, const Event& event) {
    if (event.kind == EventKind::start && event.text == classViewKind && event.names.size() > classViewPath) {
        const notation::Name& name = event.names[classViewPath];
        return name.hasEscapes && isPathFrom(root, name.text) ? std::optional(name.offset) : std::nullopt;
    }
    const bool isPath = event.kind == EventKind::text && isPathFrom(root, event.text) &&
                        std::ranges::find(pathKeys, event.key) != pathKeys.end();
    return isPath ? std::optional(event.place.offset + 1) : std::nullopt;
}

} // namespace

std::optional<RenamedRoot> findRenamedRoot(const UnitTree& tree) {
    const ResolvedFile& model = tree.files.front();
    if (!model.contents.root) {
        return std::nullopt;
    }
    RenamedRoot root{0, *model.contents.root};
    const auto unit = std::ranges::lower_bound(model.units, root.head.place.offset, {},
                                               [](const Unit& each) { return each.reference.range.begin; });
    const bool isUnit = unit != model.units.end() && unit->reference.range.begin == root.head.place.offset;
    if (isUnit && unit->state == UnitState::found) {
        const std::optional<PackageHead>& head = tree.files[unit->file].contents.head;
        if (!head) {
            return std::nullopt;
        }
        root = {unit->file, *head};
    }
    return root.head.name != logicalView ? std::optional(std::move(root)) : std::nullopt;
}

std::vector<Range> findPathsFrom(std::string_view root, const std::filesystem::path& file, const Range& part) {
    std::vector<Range> found;
    if (root.empty()) {
        return found;
    }
    OpenFile source(file);
    notation::Reader reader(source);
    while (reader.next() && reader.event().place.offset < part.end) {
        const std::optional<std::uint64_t> path = pathFrom(root, reader.event());
        if (path && *path >= part.begin) {
            found.push_back({*path, *path + root.size()});
        }
    }
    return found;
}

} // namespace units
