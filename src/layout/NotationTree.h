#pragma once

#include "units/UnitTree.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace layout {

using NodeId = std::uint32_t;
inline constexpr NodeId noNode = 0; ///< the root, which has no owner

enum class NodeKind : std::uint8_t { root, object, list, value, group, text, number, reference, location, word };

/// An object, a list, a property's value. Texts are in UTF-8.
struct Node {
    NodeKind kind = NodeKind::root;
    std::uint32_t file = 0; ///< in `UnitTree::files`
    NodeId parent = noNode;
    NodeId first = noNode;
    NodeId last = noNode;
    NodeId next = noNode;        ///< beside the key, for lookups, which walk over both
    std::string_view key;        ///< of the property that it is the value of; empty for none
    std::string_view text;       ///< of an object or a list the word that says what it is; else the value
    std::string_view firstName;  ///< of an object
    std::string_view name;       ///< the last one; both are the same where there is only one
    std::int64_t reference = -1; ///< of an object the number after "@", of a reference likewise
    double x = 0;                ///< of a location; of a number its value
    double y = 0;                ///< of a location
    std::uint64_t line = 0;      ///< where it begins
};

/// The faults of the notation in the files, which were repaired.
struct Damages {
    std::size_t count = 0;
    std::uint32_t file = 0; ///< of the first, in `UnitTree::files`
    std::string first;      ///< its place and what is wrong
};

/// The text of a model and its units as far as pictures need it: all objects, and of their properties those of a table.
/// The content of a unit stands where the model refers to it.
///
/// Owns all texts. Immutable, so several threads may use it. Takes time and memory proportional to the files, about 3.5
/// times their size; a lookup of a property walks the properties of one object.
class NotationTree {
public:
    /// Throws `std::system_error` when a file cannot be read.
    explicit NotationTree(const units::UnitTree& files);
    NotationTree(const NotationTree&) = delete;
    NotationTree& operator=(const NotationTree&) = delete;
    ~NotationTree();

    [[nodiscard]] const Node& operator[](NodeId id) const { return nodes_[id]; }
    [[nodiscard]] std::size_t size() const { return nodes_.size(); }

    /// The value of an object's first property of that name, or `noNode`.
    [[nodiscard]] NodeId find(NodeId object, std::string_view key) const;
    /// The text of a property; of a "(value ...)" that in it. Empty when there is none.
    [[nodiscard]] std::string_view text(NodeId object, std::string_view key) const;
    [[nodiscard]] bool isTrue(NodeId object, std::string_view key) const { return text(object, key) == "TRUE"; }
    [[nodiscard]] double number(NodeId object, std::string_view key, double otherwise) const;
    [[nodiscard]] std::int64_t reference(NodeId object, std::string_view key) const;
    /// The node after this one in the order of the text, within `top`; `noNode` after the last. With `skips` what is in
    /// this one is left out.
    [[nodiscard]] NodeId following(NodeId id, NodeId top, bool skips = false) const;
    [[nodiscard]] const Damages& getDamages() const { return damages_; }
    /// The file as outputs name it: relative to the model's folder, or only its name; empty for the model's own.
    [[nodiscard]] const std::string& fileName(std::uint32_t file) const { return fileNames_[file]; }

private:
    class Loader;

    /// Grows without moving the nodes, which are most of the memory.
    class Nodes {
    public:
        Node& add() {
            if (size_ % blockSize == 0) {
                blocks_.push_back(std::make_unique<Node[]>(blockSize));
            }
            return (*this)[static_cast<NodeId>(size_++)];
        }
        Node& operator[](NodeId id) { return blocks_[id / blockSize][id % blockSize]; }
        const Node& operator[](NodeId id) const { return blocks_[id / blockSize][id % blockSize]; }
        [[nodiscard]] std::size_t size() const { return size_; }

    private:
        static constexpr std::size_t blockSize = 512;

        std::vector<std::unique_ptr<Node[]>> blocks_;
        std::size_t size_ = 0;
    };

    Nodes nodes_;
    std::vector<std::unique_ptr<char[]>> texts_;
    std::vector<std::string> fileNames_;
    Damages damages_;
};

} // namespace layout
