// Bytes that the encoding of their file lacks.

#include "ledger/SourceText.h"
#include "ledger/makeLedger.h"
#include "units/OpenFile.h"
#include "units/localText.h"

#include <algorithm>

namespace ledger {

namespace {

constexpr std::size_t pieceSize = std::size_t{64} * 1024;

/// Moves a place over bytes.
void pass(notation::Place& place, std::string_view bytes) {
    for (const char byte : bytes) {
        ++place.offset;
        ++place.column;
        if (byte == '\n') {
            ++place.line;
            place.column = 1;
        }
    }
}

/// Lines that are read from a file, whole ones where they are not very long.
class Lines {
public:
    explicit Lines(const std::filesystem::path& path) : source_(path), buffer_(pieceSize, '\0') {}

    /// The next bytes, up to the end of a line if there is one among them; empty at the end of the file. A line feed is
    /// no part of a longer character in any encoding that files have.
    std::string_view next() {
        held_.erase(0, given_);
        given_ = 0;
        while (held_.size() < pieceSize) {
            const std::size_t count = source_.read(buffer_.data(), buffer_.size());
            if (count == 0) {
                given_ = held_.size();
                return held_;
            }
            held_.append(buffer_.data(), count);
        }
        const std::size_t end = held_.rfind('\n');
        given_ = end != std::string::npos ? end + 1 : held_.size();
        return std::string_view(held_).substr(0, given_);
    }

private:
    units::OpenFile source_;
    std::string buffer_;
    std::string held_;
    std::size_t given_ = 0;
};

} // namespace

void forEachBadBytes(const units::UnitTree& tree, const Choices& choices,
                     const std::function<void(const BadBytes&)>& take) {
    for (std::size_t index = 0; index < tree.files.size(); ++index) {
        const units::ResolvedFile& file = tree.files[index];
        SourceText text(choices.encodingByFile ? KelString(units::encodingOf(file.contents.charSet))
                                               : choices.encoding);
        Lines lines(file.path);
        BadBytes bad{static_cast<std::uint32_t>(index), {}, {}};
        for (std::string_view bytes = lines.next(); !bytes.empty(); bytes = lines.next()) {
            std::size_t passed = 0;
            if (!isPlain(bytes)) {
                for (const SourceText::Run& run : text.badRuns(bytes)) {
                    pass(bad.place, bytes.substr(passed, run.offset - passed));
                    passed = run.offset;
                    bad.bytes = bytes.substr(run.offset, run.length);
                    take(bad);
                }
            }
            pass(bad.place, bytes.substr(passed));
        }
    }
}

} // namespace ledger
