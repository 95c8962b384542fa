// Finds bytes that are invalid in the encoding of their file.

#include "host/encoding/KelTextDecoder.h"
#include "ledger/SourceText.h"
#include "ledger/makeLedger.h"
#include "units/OpenFile.h"
#include "units/localText.h"

#include <algorithm>

namespace ledger {

namespace {

constexpr std::size_t pieceSize = std::size_t{64} * 1024;

/// Advances a place by bytes.
void pass(notation::Place& place, std::string_view bytes) {
    const std::size_t lastEnd = bytes.rfind('\n');
    place.offset += bytes.size();
    place.line += static_cast<std::uint64_t>(std::ranges::count(bytes, '\n'));
    place.column = lastEnd != std::string_view::npos ? bytes.size() - lastEnd : place.column + bytes.size();
}

/// The offset of the first byte from `from` on that is not ASCII; the length if there is none. All bytes before it on
/// its line are characters, so that a multi-byte character cannot begin earlier.
std::size_t firstOdd(std::string_view bytes, std::size_t from) {
    constexpr std::size_t step = 256;
    while (from < bytes.size() && isPlain(bytes.substr(from, step))) {
        from += step;
    }
    const auto* end = bytes.data() + bytes.size();
    return static_cast<std::size_t>(
        std::find_if(bytes.data() + std::min(from, bytes.size()), end, [](char byte) { return byte < 0; }) -
        bytes.data());
}

/// Reads a file in runs of whole lines, unless lines are very long.
class Lines {
public:
    explicit Lines(const std::filesystem::path& path) : source_(path), buffer_(pieceSize, '\0') {}

    /// The next bytes, up to a line end if they contain one; empty at the end of the file. A line feed is never part of
    /// a longer character in the encodings of model files.
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
        KelTextDecoder decoder(choices.encodingByFile ? KelString(units::encodingOf(file.contents.charSet))
                                                      : choices.encoding);
        Lines lines(file.path);
        BadBytes bad{static_cast<std::uint32_t>(index), {}, {}};
        for (std::string_view bytes = lines.next(); !bytes.empty(); bytes = lines.next()) {
            std::size_t passed = 0;
            for (std::size_t at = firstOdd(bytes, 0); at < bytes.size();) {
                const std::size_t end = std::min(bytes.find('\n', at), bytes.size());
                for (const KelTextDecoder::Run& run : decoder.badRuns(bytes.substr(at, end - at))) {
                    pass(bad.place, bytes.substr(passed, at + run.offset - passed));
                    passed = at + run.offset;
                    bad.bytes = bytes.substr(passed, run.length);
                    take(bad);
                }
                at = firstOdd(bytes, end);
            }
            pass(bad.place, bytes.substr(passed));
        }
    }
}

} // namespace ledger
