#include "units/Assembly.h"

#include "host/encoding/KelEncodingConverter.h"
#include "host/encoding/convertText.h"
#include "units/OpenFile.h"
#include "units/localText.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace units {

namespace {

constexpr std::string_view packageKind = "Class_Category";
constexpr std::string_view rootPackage = "Logical View"; // no package outside of it is imported
constexpr std::uint64_t toTheEnd = std::numeric_limits<std::uint64_t>::max();

constexpr std::string_view wrapping = "\n(object Design \"Logical View\"\n"
                                      "    root_category \t(object Class_Category \"Logical View\"\n"
                                      "\tlogical_models \t(list unit_reference_list\n";
constexpr std::string_view closing = "\n\tlogical_presentations \t(list unit_reference_list)";

/// The first part of `text`, up to its line end, which is included.
std::string_view firstLine(std::string_view text) {
    const std::size_t end = text.find_first_of("\r\n");
    return end == std::string_view::npos ? text : text.substr(0, end + 1);
}

/// How many bytes in front are ASCII, and the same in both.
std::size_t sharedAscii(std::string_view first, std::string_view second) {
    const auto [end, other] = std::ranges::mismatch(first, second, [](char one, char two) {
        return one == two && static_cast<unsigned char>(one) < 0x80; // of ASCII
    });
    return static_cast<std::size_t>(end - first.begin());
}

/// Writes ranges of files, in their bytes or in UTF-8, and notes where they come from.
class Writer {
public:
    Writer(const UnitTree& tree, bool toUtf8, const std::function<void(std::string_view)>& write)
        : tree_(tree), toUtf8_(toUtf8), write_(write), buffer_(std::size_t{256} * 1024, '\0') {}

    void copy(std::size_t file, Range range) {
        OpenFile& source = open(file);
        source.seek(range.begin);
        const std::uint64_t begin = range.begin;
        std::string whole;
        while (range.begin < range.end) {
            const std::uint64_t room = std::min<std::uint64_t>(buffer_.size(), range.end - range.begin);
            const std::size_t count = source.read(buffer_.data(), room);
            if (count == 0) {
                break;
            }
            const std::string_view part(buffer_.data(), count);
            toUtf8_ ? static_cast<void>(whole += part) : put(file, range.begin, count, part, true);
            range.begin += count;
        }
        if (toUtf8_) {
            convert(file, begin, whole);
        }
    }
    /// Puts in text that is in no file.
    void put(std::size_t file, std::uint64_t offset, std::string_view text) { put(file, offset, 0, text, false); }

    [[nodiscard]] PieceMap& pieces() { return pieces_; }

private:
    OpenFile& open(std::size_t file) {
        if (source_ == nullptr || file != openIndex_) {
            source_ = std::make_unique<OpenFile>(tree_.files[file].path);
            openIndex_ = file;
        }
        return *source_;
    }

    void put(std::size_t file, std::uint64_t offset, std::uint64_t fileLength, std::string_view text, bool isCopied) {
        write_(text);
        pieces_.add({0, text.size(), file, offset, fileLength, isCopied});
    }

    // As a whole: a part might end within a character.
    void convert(std::size_t file, std::uint64_t offset, const std::string& bytes) {
        KelEncodingConverter from(encodingOf(tree_.files[file].contents.charSet));
        KelEncodingConverter utf8("UTF-8");
        KelString text{std::string_view(bytes)};
        convertText(from, utf8, text);
        write_(text.view());
        noteConverted(file, offset, bytes, text.view());
    }

    // The lines of both texts are the same ones: in no encoding that a charSet means is a line end part of a character,
    // and none is made from anything else.
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
    std::string buffer_;
    std::unique_ptr<OpenFile> source_;
    std::size_t openIndex_ = 0;
};

/// A range of a file that is being written, as far as the unit that comes next in it.
struct Writing {
    std::size_t file;
    Range rest;
    std::size_t nextUnit;
};

// Files nest without taking stack.
void writeNested(const UnitTree& tree, Writing start, Writer& writer) {
    std::vector<Writing> open{start};
    while (!open.empty()) {
        Writing& at = open.back();
        const std::vector<Unit>& units = tree.files[at.file].units;
        while (at.nextUnit < units.size() && units[at.nextUnit].reference.range.begin < at.rest.begin) {
            ++at.nextUnit;
        }
        if (at.nextUnit == units.size() || units[at.nextUnit].reference.range.begin >= at.rest.end) {
            writer.copy(at.file, at.rest);
            open.pop_back();
            continue;
        }
        const Unit& unit = units[at.nextUnit++];
        const Range& place = unit.reference.range;
        if (unit.state == UnitState::found) {
            writer.copy(at.file, {at.rest.begin, place.begin});
            at.rest.begin = place.end;
            open.push_back({unit.file, tree.files[unit.file].contents.content, 0});
        } else {
            const bool closes = unit.reference.kind == packageKind;
            const bool endsBefore = closes && unit.reference.isClosed; // in front of the parenthesis
            const std::uint64_t end = endsBefore ? place.end - 1 : place.end;
            writer.copy(at.file, {at.rest.begin, end});
            writer.put(at.file, end, closes ? closing : "");
            at.rest.begin = end;
        }
    }
}

} // namespace

bool Assembly::isWrapped() const {
    const UnitFile& model = tree_->files[0].contents;
    return model.isModel && model.kind == packageKind && model.name != rootPackage;
}

bool Assembly::isMixed() const {
    const auto encoding = [](const ResolvedFile& file) { return std::string_view(encodingOf(file.contents.charSet)); };
    return std::ranges::any_of(tree_->files,
                               [&](const ResolvedFile& file) { return encoding(file) != encoding(tree_->files[0]); });
}

PieceMap Assembly::write(Bytes bytes, const std::function<void(std::string_view)>& write) const {
    Writer writer(*tree_, bytes == Bytes::utf8IfMixed && isMixed(), write);
    if (!isWrapped()) {
        writeNested(*tree_, {0, {0, toTheEnd}, 0}, writer);
        return std::move(writer.pieces());
    }
    const Range& content = tree_->files[0].contents.content;
    writer.copy(0, {0, content.begin});
    writer.put(0, content.begin, wrapping);
    writeNested(*tree_, {0, content, 0}, writer);
    for (const std::string_view text : {std::string_view(")"), closing, std::string_view("))\n")}) {
        writer.put(0, content.end, text);
    }
    return std::move(writer.pieces());
}

} // namespace units
