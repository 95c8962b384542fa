#include "host/encoding/charSetEncoding.h"

#include <algorithm>
#include <array>

namespace {

struct CharSet {
    int number;
    const char* encoding;
};

// Windows' own numbers. 130 (Johab) is left out, since the conversion service does not have that encoding.
constexpr auto charSets = std::to_array<CharSet>({
    {0, "windows-1252"},   // ANSI
    {1, "windows-1252"},   // default
    {2, "windows-1252"},   // symbol: not an encoding of texts; the texts beside symbols are in this one
    {77, "macintosh"},     // Mac
    {128, "windows-932"},  // Japanese
    {129, "windows-949"},  // Korean
    {134, "windows-936"},  // simplified Chinese
    {136, "windows-950"},  // traditional Chinese
    {161, "windows-1253"}, // Greek
    {162, "windows-1254"}, // Turkish
    {163, "windows-1258"}, // Vietnamese
    {177, "windows-1255"}, // Hebrew
    {178, "windows-1256"}, // Arabic
    {186, "windows-1257"}, // Baltic
    {204, "windows-1251"}, // Cyrillic
    {222, "windows-874"},  // Thai
    {238, "windows-1250"}, // Central European
    {255, "IBM850"},       // OEM
});

} // namespace

const char* charSetEncoding(std::optional<std::int64_t> charSet) {
    const auto found =
        std::find_if(charSets.begin(), charSets.end(), [&](const CharSet& row) { return row.number == charSet; });
    return found != charSets.end() ? found->encoding : nullptr;
}
