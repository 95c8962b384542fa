// With every set of instructions and behind every size of buffer and of reads the scanner reports what a scanner
// reports that tries every pattern at every position. The first byte chooses the sizes, the rest is the text.

#include "require.h"
#include "scanner/MatchEvent.h"
#include "scanner/VectorCode.h"

#include <cstdint>
#include <iterator>
#include <string>

namespace {

constexpr std::size_t sizes[] = {1, 2, 3, 7, 61, 128, 1000, 8192};

/// Lines in front of the text that put the middle of it at the end of a block that is searched at once.
std::string behindLines(std::string_view text) {
    return std::string(rose::blockSize - text.size() / 2 % rose::blockSize, '\n').append(text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view text(reinterpret_cast<const char*>(bytes) + 1, size - 1);
    const std::string farText = behindLines(text);
    const std::size_t bufferSize = sizes[bytes[0] % std::size(sizes)];
    const std::size_t readSize = sizes[bytes[0] / std::size(sizes) % std::size(sizes)];
    const rose::test::MatchEvents expected = rose::test::simpleEvents(text);
    for (const rose::VectorCode& code : rose::vectorCodes()) {
        const std::string with = std::string(" with ") + code.instructions;
        fuzz::require(rose::test::matcherEvents(text, bufferSize, readSize, code) == expected,
                      "other matches" + with + ", a buffer of " + std::to_string(bufferSize) + " and reads of " +
                          std::to_string(readSize));
        fuzz::require(rose::test::matcherEvents(farText, rose::blockSize, rose::blockSize, code) == expected,
                      "other matches at the end of a block" + with);
    }
    return 0;
}
