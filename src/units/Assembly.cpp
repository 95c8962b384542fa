#include "units/Assembly.h"

#include "host/encoding/KelEncodingConverter.h"
#include "host/encoding/KelTextDecoder.h"
#include "host/encoding/convertText.h"
#include "units/OpenFile.h"
#include "units/localText.h"

#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace units {

namespace {

constexpr std::uint64_t toTheEnd = std::numeric_limits<std::uint64_t>::max();

constexpr std::string_view wrapping = "\n(object Design \"Logical View\"\n"
                                      "    root_category \t(object Class_Category \"Logical View\"\n"
                                      "\tlogical_models \t(list unit_reference_list\n";
constexpr std::string_view closing = "\n\tlogical_presentations \t(list unit_reference_list)";

/// The first line of `text`, with its line end.
std::string_view firstLine(std::string_view text) {
    const std::size_t end = text.find_first_of("\r\n");
    return end == std::string_view::npos ? text : text.substr(0, end + 1);
}

/// The number of leading bytes that are ASCII and equal in both.
std::size_t sharedAscii(std::string_view first, std::string_view second) {
    const auto [end, other] = std::ranges::mismatch(first, second, [](char one, char two) {
        return one == two && static_cast<unsigned char>(one) < 0x80; // of ASCII
    });
    return static_cast<std::size_t>(end - first.begin());
}

/// Writes ranges of files, unchanged or converted to UTF-8, and records their origin.
class Writer {
public:
    Writer(const UnitTree& tree, bool toUtf8, const std::function<void(std::string_view)>& write)
        : tree_(tree), toUtf8_(toUtf8), write_(write), buffer_(std::make_unique_for_overwrite<char[]>(largestPart)) {}

    void copy(std::size_t file, Range range) {
        const std::uint64_t begin = range.begin;
        std::string whole;
        while (range.begin < range.end) {
            const std::string_view part = read(file, range);
            if (part.empty()) {
                break;
            }
            toUtf8_ ? static_cast<void>(whole += part) : put(file, range.begin, part.size(), part, true);
            range.begin += part.size();
        }
        if (toUtf8_) {
            convert(file, begin, whole);
        }
    }
    /// Writes text in place of a range of a file, which may be empty.
    void replace(std::size_t file, const Range& range, std::string_view text) {
        put(file, range.begin, range.end - range.begin, text, false);
    }
    /// Called once, as the last operation.
    PieceMap finish() {
        flush();
        return std::move(pieces_);
    }

private:
    static constexpr std::size_t largestPart = std::size_t{256} * 1024;
    static constexpr std::size_t smallestRead = std::size_t{16} * 1024; // the next range is often nearby

    /// The first bytes of a range, valid until the next call; none if the file ends before the range.
    std::string_view read(std::size_t file, const Range& range) {
        if (source_ == nullptr || file != openIndex_) {
            source_ = std::make_unique<OpenFile>(tree_.files[file].path);
            openIndex_ = file;
            buffered_ = {};
        }
        const std::uint64_t length = range.end - range.begin;
        if (range.begin < buffered_.begin || range.begin >= buffered_.end) {
            source_->seek(range.begin);
            const std::uint64_t room = std::clamp<std::uint64_t>(length, smallestRead, largestPart);
            buffered_ = {range.begin, range.begin + source_->read(buffer_.get(), room)};
        }
        const std::string_view text(buffer_.get(), buffered_.end - buffered_.begin);
        return text.substr(range.begin - buffered_.begin, length);
    }

    void put(std::size_t file, std::uint64_t offset, std::uint64_t fileLength, std::string_view text, bool isCopied) {
        write(text);
        pieces_.add({0, text.size(), file, offset, fileLength, isCopied});
    }

    void write(std::string_view text) {
        written_ += text;
        if (written_.size() >= largestPart) {
            flush();
        }
    }

    void flush() {
        write_(written_);
        written_.clear();
    }

    // Takes a whole range: a part might end within a character.
    void convert(std::size_t file, std::uint64_t offset, const std::string& bytes) {
        const char* encoding = encodingOf(tree_.files[file].contents.charSet);
        const std::string text = decoders_.try_emplace(encoding, encoding).first->second.toUtf8(bytes);
        write(text);
        noteConverted(file, offset, bytes, text);
    }

    // Both texts have the same lines: in the encodings that a charSet can mean, a line end is never part of a
    // character, and conversion does not create line ends.
    void noteConverted(std::size_t file, std::uint64_t offset, std::string_view bytes, std::string_view text) {
        while (!bytes.empty() || !text.empty()) {
            const std::string_view from = firstLine(bytes);
            const std::string_view to = firstLine(text);
            const std::size_t same = sharedAscii(from, to);
            pieces_.add({0, same, file, offset, same, true});
            pieces_.add({0, to.size() - same, file, offset + same, from.size() - same, false});
            offset += from.size();
            bytes.remove_prefix(from.size());
            text.remove_prefix(to.size());
        }
    }

    const UnitTree& tree_;
    bool toUtf8_;
    const std::function<void(std::string_view)>& write_;
    PieceMap pieces_;
    std::map<std::string_view, KelTextDecoder> decoders_; // by the names of their encodings
    std::string written_;                                 // not passed on yet
    std::unique_ptr<OpenFile> source_;
    std::size_t openIndex_ = 0;
    std::unique_ptr<char[]> buffer_; // of `largestPart` bytes, of which a small file fills only the start
    Range buffered_;                 // of the open file
};

/// A range of a file that is being written, and the position of the next unit and root name in it.
struct Writing {
    std::size_t file;
    Range rest;
    std::vector<Range> rootNames; // to be replaced by "Logical View"
    std::size_t nextUnit = 0;
    std::size_t nextRootName = 0;
};

/// Writes nested contents of files. Uses no recursion: units may nest deep.
class NestedWriter {
public:
    NestedWriter(const UnitTree& tree, const std::optional<RenamedRoot>& root, bool toUtf8, Writer& writer)
        : tree_(tree), root_(root), toUtf8_(toUtf8), writer_(writer) {}

    void write(std::size_t file, const Range& part) {
        begin(file, part);
        while (!open_.empty()) {
            Writing& at = open_.back();
            const std::vector<Unit>& units = tree_.files[at.file].units;
            while (at.nextUnit < units.size() && units[at.nextUnit].reference.range.begin < at.rest.begin) {
                ++at.nextUnit;
            }
            if (at.nextUnit == units.size() || units[at.nextUnit].reference.range.begin >= at.rest.end) {
                copyTo(at.rest.end);
                open_.pop_back();
            } else {
                writeUnit(units[at.nextUnit++]);
            }
        }
    }

private:
    void begin(std::size_t file, const Range& part) {
        open_.push_back({file, part, {}});
        if (!root_) {
            return;
        }
        std::vector<Range>& names = open_.back().rootNames;
        if (const std::optional<std::string> root = rootNameIn(file)) {
            names = findPathsFrom(*root, tree_.files[file].path, part);
        }
        if (file == root_->file) {
            names.insert(std::ranges::lower_bound(names, root_->head.nameRange.begin, {}, &Range::begin),
                         root_->head.nameRange);
        }
    }

    /// The root's name in the encoding of a file; none if the encoding lacks a character of it.
    [[nodiscard]] std::optional<std::string> rootNameIn(std::size_t file) const {
        const auto encoding = [&](std::size_t index) { return encodingOf(tree_.files[index].contents.charSet); };
        KelEncodingConverter from(encoding(root_->file));
        KelEncodingConverter to(encoding(file));
        KelString name{std::string_view(root_->head.name)};
        if (toUtf8_ && !equivalentConverters(&from, &to) && !convertText(from, to, name)) {
            return std::nullopt;
        }
        return std::string(name.view());
    }

    void writeUnit(const Unit& unit) {
        Writing& at = open_.back();
        const Range& place = unit.reference.range;
        if (unit.state == UnitState::found) {
            copyTo(place.begin);
            at.rest.begin = place.end;
            begin(unit.file, tree_.files[unit.file].contents.content);
        } else if (unit.reference.kind == packageKind) {
            copyTo(unit.reference.isClosed ? place.end - 1 : place.end); // before the parenthesis
            writer_.replace(at.file, {at.rest.begin, at.rest.begin}, closing);
        } else {
            copyTo(place.end);
        }
    }

    void copyTo(std::uint64_t end) {
        Writing& at = open_.back();
        while (at.nextRootName < at.rootNames.size() && at.rootNames[at.nextRootName].end <= end) {
            const Range& name = at.rootNames[at.nextRootName++];
            if (name.begin >= at.rest.begin) { // it is not in a reference that was replaced by a unit
                writer_.copy(at.file, {at.rest.begin, name.begin});
                writer_.replace(at.file, name, logicalView);
                at.rest.begin = name.end;
            }
        }
        writer_.copy(at.file, {at.rest.begin, end});
        at.rest.begin = end;
    }

    const UnitTree& tree_;
    const std::optional<RenamedRoot>& root_;
    bool toUtf8_;
    Writer& writer_;
    std::vector<Writing> open_; // the innermost last
};

} // namespace

bool Assembly::isWrapped() const {
    return isLonePackage(tree_->files[0].contents);
}

bool Assembly::isMixed() const {
    const auto encoding = [](const ResolvedFile& file) { return std::string_view(encodingOf(file.contents.charSet)); };
    return std::ranges::any_of(tree_->files,
                               [&](const ResolvedFile& file) { return encoding(file) != encoding(tree_->files[0]); });
}

PieceMap Assembly::write(Bytes bytes, const std::function<void(std::string_view)>& write) const {
    const bool toUtf8 = bytes == Bytes::utf8IfMixed && isMixed();
    Writer writer(*tree_, toUtf8, write);
    NestedWriter nested(*tree_, renamedRoot_, toUtf8, writer);
    if (!isWrapped()) {
        nested.write(0, {0, toTheEnd});
        return writer.finish();
    }
    const Range& content = tree_->files[0].contents.content;
    writer.copy(0, {0, content.begin});
    writer.replace(0, {content.begin, content.begin}, wrapping);
    nested.write(0, content);
    for (const std::string_view text : {std::string_view(")"), closing, std::string_view("))\n")}) {
        writer.replace(0, {content.end, content.end}, text);
    }
    return writer.finish();
}

} // namespace units
