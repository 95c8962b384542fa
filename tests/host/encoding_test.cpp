#include "host/encoding/KelEncodingConverter.h"
#include "host/encoding/KelTextDecoder.h"
#include "host/encoding/charSetEncoding.h"
#include "host/encoding/convertText.h"
#include "host/encoding/localeText.h"
#include "host/options/BLIB.h"
#include "host/text/KelString.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace std::string_view_literals;

#define REPLACED "\xEF\xBF\xBD"

struct ConversionRow {
    const char* from;
    const char* to;
    std::string_view source;
    std::string_view expected;
    bool valid;
};

constexpr ConversionRow conversions[] = {
    {"windows-1252", "UTF-8", ""sv, ""sv, true},
    {"windows-1252", "UTF-8", "a\0\xE9\0b \x80"sv, "a\0\xC3\xA9\0b \xE2\x82\xAC"sv, true},
    {"windows-932", "UTF-8", "\xB1\x83"sv, "\xEF\xBD\xB1" REPLACED, false},
    {"UTF-8", "UTF-16BE", "a\xFF\xE2\x82z"sv, "\0a\xFF\xFD\xFF\xFD\0z"sv, false},
    // Stateful: it looks plain but is not.
    {"UTF-7", "UTF-8", "a+AOk-"sv, "a\xC3\xA9"sv, true},
    // Byte order marks go, and a text without one comes.
    {"UTF-16", "UTF-8", "\xFF\xFE\x61\0"sv, "a"sv, true},
    {"ISO-2022-JP", "UTF-8", "\x1B(B"sv, ""sv, true}, // nothing comes first, whatever the text before has left
    {"UTF-16BE", "UTF-8", "\0a\xFE\xFF"sv, "a\xEF\xBB\xBF"sv, true},
    {"UTF-8", "windows-1252", "\xEF\xBB\xBF\xC3\xA9"sv, "\xE9"sv, true},
    {"UTF-8", "ISO-2022-JP", "\xE3\x82\xBD"sv, "\x1B$B%=\x1B(B"sv, true}, // with the sequence at its end
    {"UTF-8", "UTF-16", "a"sv, "\0a"sv, true},
    {"UTF-16BE", "UTF-8", "\0a\0"sv, "a" REPLACED, false},
    // The target does not have it.
    {"UTF-8", "windows-1252", "a\xD0\x96"sv, "a\x1A"sv, false},
    {"UTF-8", "ibm-37", "a"sv, "\x81"sv, true},
};

TEST(ConvertTextTest, GivesTheExpectedBytes) {
    for (const ConversionRow& row : conversions) {
        SCOPED_TRACE(testing::Message() << row.from << " to " << row.to << ": " << row.expected);
        KelEncodingConverter from(row.from);
        KelEncodingConverter to(row.to);
        for (int round = 0; round < 2; ++round) { // the second finds the converters as the first left them
            KelString text(row.source);
            EXPECT_EQ(convertText(from, to, text), row.valid);
            EXPECT_EQ(text.view(), row.expected);
        }
    }
}

// Every character outside ASCII moves the buffers of the conversion against the text by one more unit.
TEST(ConvertTextTest, LosesNothingBetweenBuffersAndDropsOneMark) {
    const std::string_view units[] = {"\x83\x5C"sv, "a"sv, "\xB1"sv, "\xFD"sv};
    const std::string_view converted[] = {"\xE3\x82\xBD"sv, "a"sv, "\xEF\xBD\xB1"sv, REPLACED};
    KelEncodingConverter from("windows-932");
    KelEncodingConverter to("UTF-8");
    for (std::size_t offset = 0; offset < 8; ++offset) {
        std::string source(offset, ' ');
        std::string expected(offset, ' ');
        for (std::size_t i = 0; i < 20000; ++i) {
            const std::size_t unit = (i * i + i / 7) % 4;
            source += units[unit];
            expected += converted[unit];
        }
        KelString text{std::string_view(source)};
        EXPECT_FALSE(convertText(from, to, text));
        ASSERT_TRUE(text.view() == expected) << "offset " << offset;
    }
    std::string pairs;
    std::string surrogates;
    std::string marks;
    std::string allButOne;
    for (int i = 0; i < 5000; ++i) {
        pairs += "\xF0\x90\x80\x80";
        surrogates.append("\xD8\x00\xDC\x00", 4);
        marks += "\xFE\xFF";
        allButOne += i > 0 ? "\xEF\xBB\xBF" : "";
    }
    KelEncodingConverter wide("UTF-16BE");
    for (const std::size_t offset : {0U, 1U}) {
        KelString text{std::string(offset, '.') + pairs};
        EXPECT_TRUE(convertText(to, wide, text));
        ASSERT_TRUE(text.view() == std::string(offset, '\0') + std::string(offset, '.') + surrogates) << offset;
    }
    KelString text{std::string_view(marks)};
    EXPECT_TRUE(convertText(wide, to, text));
    EXPECT_TRUE(text.view() == allButOne) << text.length();
}

TEST(KelEncodingConverterTest, EquivalenceIsThatOfCanonicalNames) {
    const KelEncodingConverter utf8("UTF-8");
    const KelEncodingConverter alias("ibm-1208");
    const KelEncodingConverter other("UTF-16");
    const KelEncodingConverter none("unknown");
    EXPECT_TRUE(equivalentConverters(&utf8, &alias) && !equivalentConverters(&utf8, &other));
    EXPECT_FALSE(equivalentConverters(&none, &none) || equivalentConverters(&utf8, &none));
    EXPECT_TRUE(none.getHandle() == nullptr && none.getEncodingName().isEmpty());
}

TEST(KelEncodingConverterTest, PlainTextIsWhatTheEncodingLeavesAsItIs) {
    const struct {
        const char* encoding;
        std::string_view text;
        bool plain;
    } rows[] = {
        {"windows-1252", "Order::id\n\0\x7F"sv, true},
        {"windows-932", "a\x1A"sv, false},
        {"UTF-16", "ab"sv, false},
        {"UTF-7", "Order.1"sv, true},
        {"UTF-7", "C+"sv, false},
        {"ISO-2022-KR", "ab"sv, false},
        {"ISO-2022-JP", "\x1B(B"sv, false},
        {"ebcdic-xml-us", "Order"sv, false},
        {"no-such-encoding", "Order"sv, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(KelEncodingConverter(row.encoding).isPlainText(row.text), row.plain)
            << row.encoding << " " << row.text;
    }
}

TEST(KelTextDecoderTest, ReplacesWhatTheEncodingDoesNotHaveAndTellsWhereItIs) {
    struct Row {
        const char* encoding;
        std::string_view bytes;
        std::string_view expected;
        std::vector<std::size_t> badRuns; // offset and length of each
    };
    const Row rows[] = {
        {"windows-1252", "Creating caf\xE9\0"sv, "Creating caf\xC3\xA9\0"sv, {}},
        {"windows-936", "\xD6\xD0\xA0\"\xD6"sv, "\xE4\xB8\xAD" REPLACED "\"" REPLACED, {2, 1, 4, 1}},
        {"UTF-8", "caf\xE9 \xE2\x82z", "caf" REPLACED " " REPLACED "z", {3, 1, 5, 2}},
        {"ISO-2022-JP", "\x1B$B%=\x1B(B", "\xE3\x82\xBD", {}}, // though all of it is ASCII
        {"unknown", "caf\xE9", "caf\xE9", {}},
        {"no such encoding", "caf\xE9", "caf\xE9", {}},
    };
    for (const Row& row : rows) {
        KelTextDecoder decoder(row.encoding);
        for (int round = 0; round < 2; ++round) { // the second finds the converters as the first left them
            bool isWhole = !row.badRuns.empty();
            EXPECT_EQ(decoder.toUtf8(row.bytes, &isWhole), row.expected) << row.encoding;
            EXPECT_EQ(isWhole, row.badRuns.empty()) << row.encoding;
            std::vector<std::size_t> found;
            for (const KelTextDecoder::Run& run : decoder.badRuns(row.bytes)) {
                found.insert(found.end(), {run.offset, run.length});
            }
            EXPECT_EQ(found, row.badRuns) << row.encoding;
        }
    }
}

/// What one text has taught does not hide what is wrong in the next one.
TEST(KelTextDecoderTest, FindsBadBytesBetweenKnownCharacters) {
    const std::string_view pieces[] = {"\xD6\xD0",         "\xCE\xC4",     "a",   "\xFF", "\x81",
                                       "\x81\x30\x81\x30", "\xE4\xB8\xAD", "\x80"};
    for (const char* encoding :
         {"windows-936", "gb18030", "Shift_JIS", "Big5", "windows-1252", "UTF-8", "ISO-2022-JP"}) {
        KelTextDecoder taught(encoding);
        for (const std::string_view first : pieces) {
            for (const std::string_view second : pieces) {
                for (const std::string_view third : pieces) {
                    const std::string text = std::string(first) + std::string(second) + std::string(third);
                    const auto known = taught.badRuns(text);
                    const auto fresh = KelTextDecoder(encoding).badRuns(text);
                    EXPECT_TRUE(std::ranges::equal(known, fresh, [](const auto& one, const auto& other) {
                        return one.offset == other.offset && one.length == other.length;
                    })) << encoding;
                    EXPECT_EQ(taught.toUtf8(text), KelTextDecoder(encoding).toUtf8(text)) << encoding;
                }
            }
        }
    }
}

TEST(EncodingListTest, HasAsciiAndWhatTheCharacterSetsNeed) {
    std::set<std::string_view> offered;
    for (int i = 0; i < BLIB::BP_ENCODING_ENUM.getValueCount(); ++i) {
        const KelString& name = BLIB::BP_ENCODING_ENUM.getValue(i)->getIdentifier();
        EXPECT_TRUE(offered.insert(name.view()).second) << name.text();
        EXPECT_EQ(KelEncodingConverter(name).isPlainText("(object Petal"), name.view() != "unknown") << name.text();
    }
    for (int charSet = -1; charSet < 300; ++charSet) {
        const char* encoding = charSetEncoding(charSet);
        EXPECT_TRUE(encoding == nullptr || offered.contains(encoding)) << charSet;
    }
    EXPECT_TRUE(charSetEncoding(-1) == nullptr && charSetEncoding(3) == nullptr);
    EXPECT_STREQ(charSetEncoding(134), "windows-936");
}

/// Puts the process into a locale, and back into its former one.
class InLocale {
public:
    explicit InLocale(const char* name) : former_(std::setlocale(LC_CTYPE, nullptr)) {
        EXPECT_NE(std::setlocale(LC_CTYPE, name), nullptr) << name;
    }
    InLocale(const InLocale&) = delete;
    InLocale& operator=(const InLocale&) = delete;
    ~InLocale() { std::setlocale(LC_CTYPE, former_.c_str()); }

private:
    std::string former_;
};

TEST(LocaleText, TheNameOfAModelIsTheLastPartOfThePathWithoutExtension) {
    const InLocale locale("C.UTF-8");
    const struct {
        const char* path;
        const char* encoding; // of the model's texts
        const char* expected;
    } rows[] = {
        {"a/b/Order.v2.mdl", "unknown", "Order.v2"},
        {"a.b/.mdl", "unknown", ".mdl"},
        {"a.b/Order", "unknown", "Order"},
        {"C:\\models\\Order.mdl", "unknown", "Order"},
        {"a\\b/c.mdl", "unknown", "c"},
        {"a/b\\c.", "unknown", "c"},
        {"a/", "unknown", ""},
        {"a/Caf\xC3\xA9.mdl", "windows-1252", "Caf\xE9"},
        {"a/Caf\xC3\xA9.mdl", "UTF-8", "Caf\xC3\xA9"},
        {"a/Caf\xC3\xA9.mdl", "no-such-encoding", "Caf\xC3\xA9"},
        {"a/\xD0\x96\xC3\xA9.mdl", "windows-1252", "\xD0\x96\xC3\xA9"},
        {"a/Caf\xE9.mdl", "windows-1252", "Caf\xE9"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(computeNameFromPath(row.path, row.encoding), row.expected) << row.path << " " << row.encoding;
    }
    EXPECT_EQ(utf8ToLocale("/tmp/Caf\xC3\xA9.mdl"), "/tmp/Caf\xC3\xA9.mdl");
    EXPECT_EQ(utf8ToLocale("/tmp/Caf\xE9.mdl"), "/tmp/Caf\xE9.mdl");
    EXPECT_EQ(utf8ToLocale(nullptr), "");
}

// Few machines have a locale with another encoding than UTF-8, so the test makes one.
TEST(LocaleText, IsConvertedIntoTheEncodingOfTheLocale) {
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "kel_locales";
    std::filesystem::create_directories(folder);
    const std::string command =
        "localedef -c -i en_US -f ISO-8859-1 '" + (folder / "kel_TEST.ISO-8859-1").string() + "' >/dev/null 2>&1";
    const bool wasMade = std::system(command.c_str()) == 0 && setenv("LOCPATH", folder.c_str(), 1) == 0;
    if (wasMade) {
        const InLocale locale("kel_TEST.ISO-8859-1");
        EXPECT_EQ(utf8ToLocale("/tmp/Caf\xC3\xA9"), "/tmp/Caf\xE9");
        EXPECT_EQ(utf8ToLocale("/tmp/\xD0\x96\xC3\xA9"), "/tmp/\xD0\x96\xC3\xA9");
        EXPECT_EQ(utf8ToLocale("/tmp/Caf\xE9"), "/tmp/Caf\xE9");
        EXPECT_EQ(computeNameFromPath("Caf\xE9.mdl", "macintosh"), "Caf\x8E");
    }
    unsetenv("LOCPATH");
    std::filesystem::remove_all(folder);
    if (!wasMade) {
        GTEST_SKIP() << "no locale can be made on this machine";
    }
}

} // namespace
