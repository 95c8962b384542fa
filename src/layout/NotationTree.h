#pragma once

#include "layout/Key.h"
#include "notation/Listener.h"
#include "units/UnitTree.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

namespace layout {

using NodeId = std::uint32_t;
inline constexpr NodeId noNode = 0; ///< the root, which has no owner

enum class NodeKind : std::uint8_t { root, object, list, value, group, text, number, reference, location, word };

/// The start of an object.
struct ObjectHead {
    std::string_view kind;
    std::string_view firstName;
    std::string_view name;       ///< the last one; both are the same where there is only one
    std::int64_t reference = -1; ///< the number after "@"
    std::uint64_t line = 0;      ///< where it begins
    std::uint32_t file = 0;      ///< in `UnitTree::files`
};

/// An object, a list, a property's value. Texts are in UTF-8, and live as long as the tree.
///
/// Models have hundreds of thousands of them, so a node is small, and what only objects have is elsewhere.
class Node {
public:
    NodeKind kind = NodeKind::root;
    Key key; ///< of the property that it is the value of
    NodeId parent = noNode;
    NodeId first = noNode;
    NodeId next = noNode;

    /// Of an object or a list the word that says what it is; of another the value, except for places and references.
    [[nodiscard]] std::string_view text() const {
        switch (kind) {
        case NodeKind::object:
            return data_.head->kind;
        case NodeKind::location:
        case NodeKind::reference:
            return {};
        default:
            return {data_.text.begin, data_.text.size};
        }
    }
    /// Of another node than an object that of an object without any.
    [[nodiscard]] const ObjectHead& head() const { return kind == NodeKind::object ? *data_.head : noHead; }
    [[nodiscard]] std::string_view name() const { return head().name; }
    [[nodiscard]] std::int64_t reference() const {
        return kind == NodeKind::reference ? data_.reference : head().reference;
    }
    /// PRECONDITION: it is a location.
    [[nodiscard]] double x() const { return data_.place.x; }
    [[nodiscard]] double y() const { return data_.place.y; }
    /// The value of a number, or the x of a location; 0 for other nodes.
    [[nodiscard]] double number() const;

private:
    friend class NotationTree;

    static const ObjectHead noHead;
    struct Text {
        const char* begin;
        std::size_t size;
    };
    struct Place {
        double x;
        double y;
    };
    union Data { // by `kind`
        Text text{};
        Place place;
        std::int64_t reference;
        ObjectHead* head;
    } data_;
};
static_assert(sizeof(Node) == 32);

/// Whether objects of the kind are a diagram's, not the model's.
[[nodiscard]] bool isViewKind(std::string_view kind);

/// The faults of the notation in the files, which were repaired.
struct Damages {
    std::size_t count = 0;
    std::uint32_t file = 0; ///< of the first, in `UnitTree::files`
    std::string first;      ///< its place and what is wrong
};

/// The text of a model and its units as far as pictures need it: all objects, and of their properties those of a table.
/// The content of a unit stands where the model refers to it.
///
/// Owns all texts. Immutable, so several threads may use it. Takes time and memory proportional to the files; a lookup
/// of a property walks the properties of one object.
class NotationTree {
public:
    /// What becomes of a reference to a unit that `files` does not have: an object without content, or no tree.
    enum class Lacking { isEmpty, isRefused };
    /// Thrown as soon as there is such a reference.
    struct LacksUnit {};

    /// Throws `std::system_error` when a file cannot be read, and `LacksUnit` if that is refused. To find out about
    /// units in this way takes less time than to search a file for them first: most models have none.
    explicit NotationTree(const units::UnitTree& files, Lacking lacking = Lacking::isEmpty);
    /// Of a model without units, from a reading that is not its own: `read` is called once, and passes the model's file
    /// on to its parameter. Throws what `read` throws.
    using Reading = std::function<void(notation::Listener& listener)>;
    NotationTree(const units::UnitTree& files, const Reading& read);
    NotationTree(const NotationTree&) = delete;
    NotationTree& operator=(const NotationTree&) = delete;
    ~NotationTree();

    [[nodiscard]] const Node& operator[](NodeId id) const { return nodes_[id]; }
    [[nodiscard]] std::size_t size() const { return nodes_.size(); }

    /// The value of an object's first property of that name, or `noNode`.
    [[nodiscard]] NodeId find(NodeId object, Key key) const;
    /// The text of a property; of a "(value ...)" that in it. Empty when there is none.
    [[nodiscard]] std::string_view text(NodeId object, Key key) const;
    [[nodiscard]] bool isTrue(NodeId object, Key key) const { return text(object, key) == "TRUE"; }
    [[nodiscard]] double number(NodeId object, Key key, double otherwise) const;
    [[nodiscard]] std::int64_t reference(NodeId object, Key key) const;
    /// The node after this one in the order of the text, within `top`; `noNode` after the last. With `skips` what is in
    /// this one is left out.
    [[nodiscard]] NodeId following(NodeId id, NodeId top, bool skips = false) const;
    /// The values of the properties "items" that are lists, and of the properties "quid" of objects that are no views
    /// nor in one, in the order of the files.
    [[nodiscard]] const std::vector<NodeId>& itemLists() const { return itemLists_; }
    [[nodiscard]] const std::vector<NodeId>& quids() const { return quids_; }
    /// Brings nodes into the order of `following`; those that it does not come to are left out.
    [[nodiscard]] std::vector<NodeId> sorted(std::vector<NodeId> nodes) const;
    [[nodiscard]] const Damages& getDamages() const { return damages_; }
    /// The file as outputs name it: relative to the model's folder, or only its name; empty for the model's own.
    [[nodiscard]] const std::string& fileName(std::uint32_t file) const { return fileNames_[file]; }

private:
    class Loader;

    /// Takes pieces of several megabytes in pages as large, where the system has such: each page that a process touches
    /// for the first time costs as much as reading a kilobyte of notation.
    class LargePages final : public std::pmr::memory_resource {
        void* do_allocate(std::size_t bytes, std::size_t alignment) override;
        void do_deallocate(void* memory, std::size_t bytes, std::size_t alignment) override;
        [[nodiscard]] bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
            return this == &other;
        }
    };

    /// For files of that size together.
    explicit NotationTree(std::size_t fileSize);

    LargePages memory_;
    std::pmr::vector<Node> nodes_;
    std::pmr::monotonic_buffer_resource texts_; // and the heads of objects
    std::vector<NodeId> itemLists_;
    std::vector<NodeId> quids_;
    bool isInOrder_ = true; // no unit stands within another file: that is the order of the numbers
    std::vector<std::string> fileNames_;
    Damages damages_;
};

} // namespace layout
