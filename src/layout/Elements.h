#pragma once

#include "host/text/KelTextHash.h"
#include "layout/NotationTree.h"

#include <memory_resource>
#include <mutex>
#include <string>
#include <tsl/robin_map.h>
#include <utility>
#include <vector>

namespace layout {

/// The elements of a model, by quid and by qualified name.
///
/// Refers to the tree, which must outlive it. Several threads may use it. Takes memory proportional to the tree; a
/// lookup takes logarithmic time at most, but the first one by name the time to walk the tree: few models need it.
class Elements {
public:
    explicit Elements(const NotationTree& tree);

    /// The object with that quid, case ignored; `noNode` when there is none.
    [[nodiscard]] NodeId withQuid(std::string_view quid) const;
    /// The first object with that path of names, joined with "::".
    [[nodiscard]] NodeId named(std::string_view path) const;

private:
    /// The end of a path of names.
    struct Path {
        NodeId object;
        std::uint32_t around; // the number of the path without its last name
    };
    static constexpr std::uint32_t noPath = UINT32_MAX;
    /// Made when first needed.
    struct Paths {
        std::once_flag isMade;
        std::vector<Path> all;                                       // in the order of the tree
        std::vector<std::pair<std::uint64_t, std::uint32_t>> hashes; // and numbers; in their order
    };
    void makePaths() const;
    [[nodiscard]] std::string_view kept(std::string_view quid);
    [[nodiscard]] bool isPath(std::uint32_t number, std::string_view path) const;

    const NotationTree& tree_;
    tsl::robin_map<std::string_view, NodeId, KelTextHash, std::equal_to<>,
                   std::allocator<std::pair<std::string_view, NodeId>>, true>
        quids_;                                    // in capitals; with their hashes, so that few texts are looked at
    std::pmr::monotonic_buffer_resource capitals_; // of quids that the tree has not in capitals
    mutable Paths paths_;
};

/// A line of a compartment.
struct Member {
    std::string text;
    bool isStatic = false;
    bool isAbstract = false;
};

struct MemberStyle {
    bool hasStereotypes = true;
    bool hasSignatures = true;
};

/// The attributes, or the operations, of a class, as they are drawn.
[[nodiscard]] std::vector<Member> attributesOf(const NotationTree& tree, NodeId element, const MemberStyle& style);
[[nodiscard]] std::vector<Member> operationsOf(const NotationTree& tree, NodeId element, const MemberStyle& style);
/// The names of a template's parameters with their types.
[[nodiscard]] std::vector<std::string> templateParametersOf(const NotationTree& tree, NodeId element);

/// The name after the last "::" that is not in brackets.
[[nodiscard]] std::string_view lastName(std::string_view path);
/// Whether the name stands for none.
[[nodiscard]] bool isNameless(std::string_view name);

} // namespace layout
