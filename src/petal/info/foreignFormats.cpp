#include "petal/info/foreignFormats.h"

#include <algorithm>
#include <array>

namespace petal {

namespace {

using namespace std::string_view_literals;

struct Format {
    std::string_view start;
    const char* advice;
};

constexpr const char* utf16Advice = "It is in UTF-16. Convert it to the encoding that its charSet stands for, "
                                    "with iconv for example.";
constexpr const char* archiveAdvice = "It is a compressed archive. Unpack it and name the model file in it.";

constexpr auto formats = std::to_array<Format>({
    {"\xFF\xFE"sv, utf16Advice},
    {"\xFE\xFF"sv, utf16Advice},
    {"\0("sv, utf16Advice},
    {"(\0"sv, utf16Advice},
    {"PK\3\4"sv, archiveAdvice},
    {"\x1F\x8B"sv, archiveAdvice},
    {"7z\xBC\xAF"sv, archiveAdvice},
    {"<"sv, "It is XML or HTML. Save the model with its tool, or name the file that the tool saved."},
});

} // namespace

const char* foreignFormatAdvice(std::string_view head) {
    if (head.empty()) {
        return "It is empty. Was it saved or copied completely?";
    }
    const auto* found =
        std::ranges::find_if(formats, [head](const Format& format) { return head.starts_with(format.start); });
    return found != formats.end() ? found->advice
                                  : "A model file begins with \"(object Petal\". Check that this is one as its tool "
                                    "saves it.";
}

} // namespace petal
