#include "layout/NotationTree.h"

#include "host/encoding/KelTextDecoder.h"
#include "host/text/KelTextHash.h"
#include "notation/Reader.h"
#include "notation/unescaped.h"
#include "units/OpenFile.h"
#include "units/localText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <tsl/robin_set.h>
#include <utility>

namespace layout {

namespace {

using notation::Construct;
using notation::Event;
using notation::EventKind;

/// The properties with a single value that pictures need.
constexpr std::array<std::string_view, 63> wantedKeys{"AssociationClass",
                                                      "Containment",
                                                      "IncludeAttribute",
                                                      "IncludeOperation",
                                                      "Nested",
                                                      "Parent_View",
                                                      "ShowCompartmentStereotypes",
                                                      "ShowOperationSignature",
                                                      "SuppressAttribute",
                                                      "SuppressOperation",
                                                      "abstract",
                                                      "anchor",
                                                      "anchor_loc",
                                                      "bold",
                                                      "class",
                                                      "client",
                                                      "client_cardinality",
                                                      "color",
                                                      "default_color",
                                                      "derived",
                                                      "documentation",
                                                      "drawSupplier",
                                                      "exportControl",
                                                      "face",
                                                      "fill_color",
                                                      "height",
                                                      "hidden",
                                                      "icon",
                                                      "icon_height",
                                                      "icon_style",
                                                      "icon_width",
                                                      "initv",
                                                      "is_aggregate",
                                                      "is_navigable",
                                                      "italics",
                                                      "justify",
                                                      "label",
                                                      "line_color",
                                                      "line_style",
                                                      "location",
                                                      "max_width",
                                                      "nlines",
                                                      "opExportControl",
                                                      "origin",
                                                      "origin_attachment",
                                                      "quid",
                                                      "quidu",
                                                      "result",
                                                      "sequence",
                                                      "size",
                                                      "static",
                                                      "stereotype",
                                                      "strike",
                                                      "supplier",
                                                      "sync_is_horizontal",
                                                      "synchronization",
                                                      "terminal_attachment",
                                                      "terminus",
                                                      "type",
                                                      "underline",
                                                      "width",
                                                      "y_coord",
                                                      "when"};

/// The property's name as the tree has it; empty for one that is not wanted.
std::string_view wantedKey(std::string_view key) {
    static const tsl::robin_set<std::string_view, KelTextHash> keys(wantedKeys.begin(), wantedKeys.end());
    const auto found = keys.find(key);
    return found != keys.end() ? *found : std::string_view();
}

/// The lists of properties that belong to other tools.
constexpr std::string_view toolProperties = "attributes";

constexpr double farthest = 1e12;

double toNumber(std::string_view text) {
    std::int64_t whole = 0; // as nearly all are, and these are quicker to read
    if (const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), whole);
        error == std::errc() && end == text.data() + text.size()) {
        return std::clamp(static_cast<double>(whole), -farthest, farthest);
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && std::isfinite(value) ? std::clamp(value, -farthest, farthest) : 0;
}

std::int64_t toReference(std::string_view text) {
    std::int64_t value = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() ? value : -1;
}

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

NodeKind kindOf(Construct construct) {
    switch (construct) {
    case Construct::object:
        return NodeKind::object;
    case Construct::list:
        return NodeKind::list;
    case Construct::value:
        return NodeKind::value;
    case Construct::group:
        return NodeKind::group;
    }
    return NodeKind::group;
}

/// The name of a unit's file for outputs, which are the same wherever the model is.
std::string nameBeside(const std::filesystem::path& file, const std::filesystem::path& model) {
    const std::filesystem::path folder = std::filesystem::absolute(model).lexically_normal().parent_path();
    const std::filesystem::path beside = std::filesystem::absolute(file).lexically_normal().lexically_relative(folder);
    const bool isBelow = !beside.empty() && *beside.begin() != "..";
    return (isBelow ? beside : file.filename()).generic_string();
}

} // namespace

/// Reads the files one after the other, then puts the contents of the units in their places.
class NotationTree::Loader {
public:
    Loader(NotationTree& tree, const units::UnitTree& files) : tree_(tree), files_(files) {}

    void load() {
        tree_.nodes_.add();
        contents_.resize(files_.files.size(), noNode);
        for (file_ = 0; file_ < files_.files.size(); ++file_) {
            const units::ResolvedFile& file = files_.files[file_];
            tree_.fileNames_.push_back(file_ == 0 ? std::string() : nameBeside(file.path, files_.files[0].path));
            read(file);
        }
        for (const auto& [reference, file] : places_) {
            putInPlace(reference, contents_[file]);
        }
    }

private:
    void read(const units::ResolvedFile& file) {
        units::OpenFile source(file.path);
        notation::Reader reader(source);
        KelTextDecoder decoder(units::encodingOf(file.contents.charSet));
        decoder_ = &decoder;
        unit_ = 0;
        open_.assign(1, noNode);
        skipped_ = 0;
        while (reader.next()) {
            take(reader.event());
        }
        finishText();
    }

    void take(const Event& event) {
        if (event.continues) {
            if (filling_ != noNode) {
                pending_.append(event.startsLine ? "\n" : "").append(event.text);
            }
            return;
        }
        if (event.kind == EventKind::damage) {
            if (Damages& damages = tree_.damages_; damages.count++ == 0) {
                damages.file = static_cast<std::uint32_t>(file_);
                damages.first = notation::damageLine(*event.damage);
            }
            return;
        }
        finishText();
        if (event.kind == EventKind::end) {
            if (skipped_ > 0) {
                --skipped_;
            } else if (open_.size() > 1) {
                open_.pop_back();
            }
        } else if (event.kind == EventKind::start) {
            if (skipped_ > 0 || event.key == toolProperties) {
                ++skipped_;
            } else {
                start(event);
            }
        } else if (skipped_ == 0) {
            value(event);
        }
    }

    Node& add(NodeKind kind, const Event& event) {
        const auto id = static_cast<NodeId>(tree_.nodes_.size());
        const NodeId parent = open_.back();
        Node& node = tree_.nodes_.add();
        node.kind = kind;
        node.file = static_cast<std::uint32_t>(file_);
        node.line = event.place.line;
        node.parent = parent;
        Node& above = tree_.nodes_[parent];
        (above.first == noNode ? above.first : tree_.nodes_[above.last].next) = id;
        above.last = id;
        return node;
    }

    void start(const Event& event) {
        const NodeId parent = open_.back();
        Node& node = add(kindOf(event.construct), event);
        const auto id = static_cast<NodeId>(tree_.nodes_.size() - 1);
        node.key = kept(event.key);
        node.text = kept(event.text);
        if (event.construct == Construct::object) {
            if (!event.names.empty()) {
                node.firstName = name(event.names.front());
                node.name = event.names.size() == 1 ? node.firstName : name(event.names.back());
            }
            node.reference = toReference(event.reference);
            const units::ResolvedFile& file = files_.files[file_];
            if (parent == noNode && event.text == file.contents.kind && contents_[file_] == noNode &&
                event.place.offset == file.contents.content.begin) {
                contents_[file_] = id;
            }
            while (unit_ < file.units.size() && file.units[unit_].reference.place.offset < event.place.offset) {
                ++unit_;
            }
            if (unit_ < file.units.size() && file.units[unit_].reference.place.offset == event.place.offset &&
                file.units[unit_].state == units::UnitState::found) {
                places_.emplace_back(id, file.units[unit_].file);
            }
        }
        open_.push_back(id);
    }

    void value(const Event& event) {
        const Node& above = tree_[open_.back()];
        std::string_view key;
        if (above.kind == NodeKind::object || above.kind == NodeKind::root) {
            key = wantedKey(event.key);
            if (key.empty()) {
                return;
            }
        }
        const NodeKind kind = event.kind == EventKind::location                                   ? NodeKind::location
                              : event.kind == EventKind::reference                                ? NodeKind::reference
                              : event.kind == EventKind::integer || event.kind == EventKind::real ? NodeKind::number
                              : event.kind == EventKind::text || event.kind == EventKind::line    ? NodeKind::text
                                                                                                  : NodeKind::word;
        Node& node = add(kind, event);
        node.key = key;
        switch (kind) {
        case NodeKind::location:
            node.x = toNumber(event.text);
            node.y = toNumber(event.y);
            break;
        case NodeKind::reference:
            node.reference = toReference(event.text);
            break;
        case NodeKind::number:
            node.x = toNumber(event.text);
            node.text = kept(event.text);
            break;
        default:
            filling_ = static_cast<NodeId>(tree_.nodes_.size() - 1);
            isQuoted_ = event.kind == EventKind::text;
            pending_.assign(event.text);
        }
    }

    void finishText() {
        if (filling_ != noNode) {
            Node& node = tree_.nodes_[std::exchange(filling_, noNode)];
            node.text = decoded(isQuoted_ ? notation::unescaped(pending_) : pending_);
        }
    }

    std::string_view name(const notation::Name& name) {
        return decoded(name.hasEscapes ? notation::unescaped(name.text) : std::string(name.text));
    }

    std::string_view decoded(const std::string& bytes) {
        return isAscii(bytes) ? kept(bytes) : kept(decoder_->toUtf8(bytes));
    }

    std::string_view kept(std::string_view text) {
        if (text.empty()) {
            return {};
        }
        if (text.size() > free_) {
            constexpr std::size_t chunk = std::size_t{64} * 1024;
            const std::size_t size = std::max(chunk, text.size());
            if (size == chunk) {
                chunk_ = tree_.texts_.emplace_back(new char[size]).get();
                free_ = size;
            } else {
                char* const own = tree_.texts_.emplace_back(new char[size]).get();
                std::ranges::copy(text, own);
                return {own, text.size()};
            }
        }
        char* const target = chunk_;
        std::ranges::copy(text, target);
        chunk_ += text.size();
        free_ -= text.size();
        return {target, text.size()};
    }

    /// Makes the object that refers to a unit what the unit's content is.
    void putInPlace(NodeId reference, NodeId content) {
        if (content == noNode) {
            return;
        }
        Node& target = tree_.nodes_[reference];
        Node& source = tree_.nodes_[content];
        Node merged = source;
        merged.key = target.key;
        merged.parent = target.parent;
        merged.next = target.next;
        target = merged;
        for (NodeId child = target.first; child != noNode; child = tree_.nodes_[child].next) {
            tree_.nodes_[child].parent = reference;
        }
        source.first = source.last = noNode;
        source.text = {};
    }

    NotationTree& tree_;
    const units::UnitTree& files_;
    std::size_t file_ = 0;
    std::size_t unit_ = 0; // of the file: the first that may come next
    KelTextDecoder* decoder_ = nullptr;
    std::vector<NodeId> open_;
    std::size_t skipped_ = 0; // constructs open within one that is left out
    NodeId filling_ = noNode; // whose text is in `pending_` so far
    bool isQuoted_ = false;
    std::string pending_;
    char* chunk_ = nullptr;
    std::size_t free_ = 0;
    std::vector<NodeId> contents_;                       // of each file
    std::vector<std::pair<NodeId, std::size_t>> places_; // references and the files of their units
};

NotationTree::NotationTree(const units::UnitTree& files) {
    Loader(*this, files).load();
}

NotationTree::~NotationTree() = default;

NodeId NotationTree::find(NodeId object, std::string_view key) const {
    for (NodeId child = nodes_[object].first; child != noNode; child = nodes_[child].next) {
        if (nodes_[child].key == key) {
            return child;
        }
    }
    return noNode;
}

std::string_view NotationTree::text(NodeId object, std::string_view key) const {
    NodeId found = find(object, key);
    if (found != noNode && nodes_[found].kind == NodeKind::value) {
        found = nodes_[found].first;
    }
    const NodeKind kind = nodes_[found].kind;
    return found != noNode && (kind == NodeKind::text || kind == NodeKind::word || kind == NodeKind::number)
               ? nodes_[found].text
               : std::string_view();
}

double NotationTree::number(NodeId object, std::string_view key, double otherwise) const {
    const NodeId found = find(object, key);
    return nodes_[found].kind == NodeKind::number ? nodes_[found].x : otherwise;
}

std::int64_t NotationTree::reference(NodeId object, std::string_view key) const {
    const NodeId found = find(object, key);
    return nodes_[found].kind == NodeKind::reference ? nodes_[found].reference : -1;
}

NodeId NotationTree::following(NodeId id, NodeId top, bool skips) const {
    if (!skips && nodes_[id].first != noNode) {
        return nodes_[id].first;
    }
    while (id != top && nodes_[id].next == noNode) {
        id = nodes_[id].parent;
    }
    return id == top ? noNode : nodes_[id].next;
}

} // namespace layout
