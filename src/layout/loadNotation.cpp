// Reading the files of a model into a NotationTree.
#include "host/encoding/KelTextDecoder.h"
#include "host/text/KelTextHash.h"
#include "layout/NotationTree.h"
#include "notation/Reader.h"
#include "notation/unescaped.h"
#include "notation/wordKind.h"
#include "units/OpenFile.h"
#include "units/localText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <new>
#include <utility>

namespace layout {

namespace {

using notation::Construct;
using notation::Event;
using notation::EventKind;
using notation::Line;

/// The lists of properties that belong to other tools.
constexpr std::string_view toolProperties = "attributes";

constexpr double farthest = 1e12;

double toNumber(std::string_view text) {
    constexpr std::size_t mostDigits = 9;
    const bool isNegative = text.starts_with('-');
    const std::string_view digits = text.substr(isNegative ? 1 : 0);
    if (!digits.empty() && digits.size() <= mostDigits &&
        std::ranges::all_of(digits, [](char byte) { return byte >= '0' && byte <= '9'; })) { // as nearly all are
        std::int32_t whole = 0;
        for (const char digit : digits) {
            whole = whole * 10 + (digit - '0');
        }
        return isNegative ? -whole : whole;
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
    unsigned char bits = 0; // no early end, so that the compiler can look at many bytes at a time
    for (const char byte : text) {
        bits |= static_cast<unsigned char>(byte);
    }
    return bits < 0x80;
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

/// Of files that cannot be read 0.
std::size_t sizeOf(const units::UnitTree& files) {
    std::size_t size = 0;
    for (const units::ResolvedFile& file : files.files) {
        std::error_code error;
        const std::uintmax_t known = std::filesystem::file_size(file.path, error);
        size += error ? 0 : known;
    }
    return size;
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
class NotationTree::Loader final : public notation::Listener {
public:
    Loader(NotationTree& tree, const units::UnitTree& files, Lacking lacking = Lacking::isEmpty)
        : tree_(tree), files_(files), refusesReferences_(lacking == Lacking::isRefused) {}

    /// `read` is called for each file, with the loader, once that is ready to take it.
    template <class Read>
    void load(const Read& read) {
        tree_.nodes_.emplace_back();
        open_.push_back({noNode, noNode, false});
        contents_.resize(files_.files.size(), noNode);
        isInView_.resize(files_.files.size());
        for (file_ = 0; file_ < files_.files.size(); ++file_) {
            const units::ResolvedFile& file = files_.files[file_];
            tree_.fileNames_.push_back(file_ == 0 ? std::string() : nameBeside(file.path, files_.files[0].path));
            KelTextDecoder decoder(units::encodingOf(file.contents.charSet));
            decoder_ = &decoder;
            begin();
            read(file, *this);
            finishText();
        }
        for (const auto& [reference, file] : places_) {
            putInPlace(reference, contents_[file]);
        }
    }

    void take(const Line& line) override {
        finishText();
        checkReference(line.key, line.text);
        if (line.isStart()) {
            if (!skips(line.key)) {
                start(line);
            }
        } else if (line.kind != EventKind::end && skipped_ == 0) {
            value(line);
        }
        for (std::uint32_t end = 0; end < line.ends; ++end) {
            this->end();
        }
    }

    void take(const Event& event) override {
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
        checkReference(event.key, event.text);
        if (event.kind == EventKind::end) {
            end();
        } else if (event.kind == EventKind::start) {
            if (!skips(event.key)) {
                start(event);
            }
        } else if (skipped_ == 0) {
            value(event);
        }
    }

private:
    static constexpr std::size_t longestRemembered = 64;
    /// A text of the file, and what it is in UTF-8.
    struct Decoded {
        std::string bytes;
        std::string_view text;
    };
    struct Open {
        NodeId node;
        NodeId last; // in it
        bool isView; // or in a view
    };
    /// The start of an object, as events and lines have it.
    struct Start {
        std::string_view kind;
        std::string_view firstName;
        std::string_view name;
        std::string_view reference;
        std::uint64_t line;
        std::uint64_t offset;
    };

    /// Readies itself for the next file.
    void begin() {
        decoded_.fill({});
        unit_ = 0;
        open_.resize(1);
        open_[0].isView = isInView_[file_];
        skipped_ = 0;
    }

    /// Of a reference to a unit one property says that its content is elsewhere.
    void checkReference(std::string_view key, std::string_view value) const {
        if (refusesReferences_ && key == "is_loaded" && value == "FALSE") {
            throw LacksUnit();
        }
    }

    /// Whether the construct that starts is left out.
    bool skips(std::string_view key) {
        const bool skips = skipped_ > 0 || key == toolProperties;
        skipped_ += skips ? 1 : 0;
        return skips;
    }

    void end() {
        if (skipped_ > 0) {
            --skipped_;
        } else if (open_.size() > 1) {
            open_.pop_back();
        }
    }

    /// The node is valid until the next one is added.
    Node& add(NodeKind kind, Key key) {
        const auto id = static_cast<NodeId>(tree_.nodes_.size());
        Open& above = open_.back();
        Node& node = tree_.nodes_.emplace_back();
        node.kind = kind;
        node.key = key;
        node.parent = above.node;
        (above.last == noNode ? tree_.nodes_[above.node].first : tree_.nodes_[above.last].next) = id;
        above.last = id;
        if (key == Key("quid") && !above.isView && tree_.nodes_[above.node].kind == NodeKind::object) {
            tree_.quids_.push_back(id);
        }
        return node;
    }
    [[nodiscard]] NodeId lastAdded() const { return static_cast<NodeId>(tree_.nodes_.size() - 1); }

    void start(const Line& line) {
        if (line.construct != Construct::object) {
            startList(kindOf(line.construct), Key::of(line.key), line.text);
            return;
        }
        const auto& [first, second] = line.names;
        const std::string_view name = decoded(first);
        startObject(Key::of(line.key), {line.text, name, second.data() == nullptr ? name : decoded(second),
                                        line.reference, line.place.line, line.valueBegin});
    }

    void start(const Event& event) {
        if (event.construct != Construct::object) {
            startList(kindOf(event.construct), Key::of(event.key), event.text);
            return;
        }
        Start start{event.text, {}, {}, event.reference, event.place.line, event.place.offset};
        if (!event.names.empty()) {
            start.firstName = name(event.names.front());
            start.name = event.names.size() == 1 ? start.firstName : name(event.names.back());
        }
        startObject(Key::of(event.key), start);
    }

    void startList(NodeKind kind, Key key, std::string_view word) {
        add(kind, key).data_.text = textOf(shared(word));
        if (kind == NodeKind::list && key == Key("items")) {
            tree_.itemLists_.push_back(lastAdded());
        }
        open_.push_back({lastAdded(), noNode, open_.back().isView});
    }

    /// The names are kept already.
    void startObject(Key key, const Start& start) {
        const NodeId parent = open_.back().node;
        add(NodeKind::object, key).data_.head =
            newHead({shared(start.kind), start.firstName, start.name, toReference(start.reference), start.line,
                     static_cast<std::uint32_t>(file_)});
        open_.push_back({lastAdded(), noNode, open_.back().isView || isViewKind(start.kind)});
        const units::ResolvedFile& file = files_.files[file_];
        if (parent == noNode && start.kind == file.contents.kind && contents_[file_] == noNode &&
            start.offset == file.contents.content.begin) {
            contents_[file_] = lastAdded();
        }
        while (unit_ < file.units.size() && file.units[unit_].reference.place.offset < start.offset) {
            ++unit_;
        }
        if (unit_ < file.units.size() && file.units[unit_].reference.place.offset == start.offset &&
            file.units[unit_].state == units::UnitState::found) {
            places_.emplace_back(lastAdded(), file.units[unit_].file);
            isInView_[file.units[unit_].file] = open_.back().isView; // which is read later
        }
    }

    /// Whether a value of the property is kept: within objects only those of the table are.
    [[nodiscard]] bool isWanted(Key key) const {
        const NodeKind above = tree_[open_.back().node].kind;
        return key.isOfValues() || (above != NodeKind::object && above != NodeKind::root);
    }

    void value(const Line& line) {
        const Key key = Key::of(line.key);
        if (line.construct == Construct::value) {
            startList(NodeKind::value, key, "Text");
            add(NodeKind::text, {}).data_.text = textOf(decoded(line.text));
            end();
            return;
        }
        if (!isWanted(key)) {
            return;
        }
        switch (line.kind) {
        case EventKind::location:
            add(NodeKind::location, key).data_.place = {toNumber(line.text), toNumber(line.y)};
            break;
        case EventKind::reference:
            add(NodeKind::reference, key).data_.reference = toReference(line.text);
            break;
        case EventKind::text:
            add(NodeKind::text, key).data_.text = textOf(decoded(line.text));
            break;
        default:
            const bool isWord = notation::wordKind(line.text) == notation::TokenKind::word;
            add(isWord ? NodeKind::word : NodeKind::number, key).data_.text =
                textOf(isWord ? shared(line.text) : kept(line.text));
        }
    }

    void value(const Event& event) {
        const Key key = Key::of(event.key);
        if (!isWanted(key)) {
            return;
        }
        switch (event.kind) {
        case EventKind::location:
            add(NodeKind::location, key).data_.place = {toNumber(event.text), toNumber(event.y)};
            break;
        case EventKind::reference:
            add(NodeKind::reference, key).data_.reference = toReference(event.text);
            break;
        case EventKind::integer:
        case EventKind::real:
            add(NodeKind::number, key).data_.text = textOf(kept(event.text));
            break;
        default:
            isQuoted_ = event.kind == EventKind::text;
            add(isQuoted_ || event.kind == EventKind::line ? NodeKind::text : NodeKind::word, key);
            filling_ = lastAdded();
            pending_.assign(event.text);
        }
    }

    void finishText() {
        if (filling_ != noNode) {
            const std::string_view text = decoded(isQuoted_ ? notation::unescaped(pending_) : pending_);
            tree_.nodes_[std::exchange(filling_, noNode)].data_.text = textOf(text);
        }
    }

    std::string_view name(const notation::Name& name) {
        return decoded(name.hasEscapes ? notation::unescaped(name.text) : std::string(name.text));
    }

    std::string_view decoded(std::string_view bytes) {
        if (isAscii(bytes)) {
            return kept(bytes);
        }
        if (bytes.size() > longestRemembered) {
            return kept(decoder_->toUtf8(bytes));
        }
        Decoded& known = decoded_[KelTextHash()(bytes) % decoded_.size()];
        if (known.bytes != bytes) { // a name is also in the labels and the references of what shows it
            known = {std::string(bytes), kept(decoder_->toUtf8(bytes))};
        }
        return known.text;
    }

    std::string_view kept(std::string_view text) {
        if (text.empty()) {
            return {};
        }
        auto* const target = static_cast<char*>(tree_.texts_.allocate(text.size(), 1));
        std::ranges::copy(text, target);
        return {target, text.size()};
    }

    /// The same for words, of which files have few, over and over.
    std::string_view shared(std::string_view word) {
        if (word.empty()) {
            return {};
        }
        const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(word[at]); };
        std::string_view& known =
            recent_[(byte(0) + byte(word.size() / 2) * 5U + byte(word.size() - 1) * 17U + word.size()) %
                    recent_.size()];
        if (known != word) {
            known = kept(word);
        }
        return known;
    }

    static Node::Text textOf(std::string_view text) { return {text.data(), text.size()}; }

    ObjectHead* newHead(const ObjectHead& head) {
        return new (tree_.texts_.allocate(sizeof(ObjectHead), alignof(ObjectHead))) ObjectHead(head);
    }

    /// Makes the object that refers to a unit what the unit's content is.
    void putInPlace(NodeId reference, NodeId content) {
        if (content == noNode) {
            return;
        }
        tree_.isInOrder_ = false;
        Node& target = tree_.nodes_[reference];
        Node& source = tree_.nodes_[content];
        target.kind = source.kind;
        target.first = source.first;
        target.data_ = source.data_;
        for (NodeId child = target.first; child != noNode; child = tree_.nodes_[child].next) {
            tree_.nodes_[child].parent = reference;
        }
        source.first = noNode;
        source.data_.head = newHead(source.head());
        source.data_.head->kind = {};
    }

    NotationTree& tree_;
    const units::UnitTree& files_;
    bool refusesReferences_;
    std::size_t file_ = 0;
    std::size_t unit_ = 0; // of the file: the first that may come next
    KelTextDecoder* decoder_ = nullptr;
    std::array<Decoded, 1024> decoded_; // those of late, by their hashes
    std::vector<Open> open_;
    std::size_t skipped_ = 0; // constructs open within one that is left out
    NodeId filling_ = noNode; // whose text is in `pending_` so far
    bool isQuoted_ = false;
    std::string pending_;
    std::array<std::string_view, 256> recent_;
    std::vector<NodeId> contents_;                       // of each file
    std::vector<bool> isInView_;                         // whether it is a unit of a view, or of something in one
    std::vector<std::pair<NodeId, std::size_t>> places_; // references and the files of their units
};

double Node::number() const {
    return kind == NodeKind::number ? toNumber(text()) : kind == NodeKind::location ? data_.place.x : 0;
}

NotationTree::NotationTree(const units::UnitTree& files, Lacking lacking) : NotationTree(sizeOf(files)) {
    Loader(*this, files, lacking).load([](const units::ResolvedFile& file, Loader& loader) {
        units::OpenFile source(file.path);
        notation::Reader reader(source);
        for (;;) {
            if (const Line* line = reader.nextLine()) {
                loader.take(*line);
            } else if (reader.next()) {
                loader.take(reader.event());
            } else {
                break;
            }
        }
    });
}

NotationTree::NotationTree(const units::UnitTree& files, const Reading& read) : NotationTree(sizeOf(files)) {
    Loader(*this, files).load([&](const units::ResolvedFile& /*file*/, Loader& loader) { read(loader); });
}

} // namespace layout
