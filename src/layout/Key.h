#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace layout {

/// The name of a property that pictures need, as a small number. Literals that are not in the table do not compile.
class Key {
public:
    /// None of them.
    constexpr Key() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a literal stands for its key
    consteval Key(const char* name) : number_(numberOf(name)) {}

    /// The key of a name in a file; none for other names.
    [[nodiscard]] static Key of(std::string_view name);

    [[nodiscard]] constexpr bool isNone() const { return number_ == 0; }
    /// Whether pictures need it with a single value; the other keys are of objects and lists, all of which are kept.
    [[nodiscard]] constexpr bool isOfValues() const { return !isNone() && number_ <= valueCount; }
    [[nodiscard]] constexpr std::string_view name() const { return names[number_]; }
    friend constexpr bool operator==(Key one, Key other) = default;

    static constexpr std::size_t valueCount = 63;
    static constexpr std::array<std::string_view, 74> names{
        "", "AssociationClass", "Containment", "IncludeAttribute", "IncludeOperation", "Nested", "Parent_View",
        "ShowCompartmentStereotypes", "ShowOperationSignature", "SuppressAttribute", "SuppressOperation", "abstract",
        "anchor", "anchor_loc", "bold", "class", "client", "client_cardinality", "color", "default_color", "derived",
        "documentation", "drawSupplier", "exportControl", "face", "fill_color", "height", "hidden", "icon",
        "icon_height", "icon_style", "icon_width", "initv", "is_aggregate", "is_navigable", "italics", "justify",
        "label", "line_color", "line_style", "location", "max_width", "nlines", "opExportControl", "origin",
        "origin_attachment", "quid", "quidu", "result", "sequence", "size", "static", "stereotype", "strike",
        "supplier", "sync_is_horizontal", "synchronization", "terminal_attachment", "terminus", "type", "underline",
        "width", "y_coord", "when",
        // of objects and lists only
        "class_attributes", "compartment", "compartmentItems", "font", "items", "keys", "operations", "parameters",
        "roles", "vertices"};

private:
    explicit constexpr Key(std::size_t number) : number_(static_cast<std::uint8_t>(number)) {}

    static consteval std::uint8_t numberOf(std::string_view name) {
        const auto* const found = std::ranges::find(names, name);
        return found != names.end() ? static_cast<std::uint8_t>(found - names.begin()) : throw "no such key";
    }

    std::uint8_t number_ = 0;
};

} // namespace layout
