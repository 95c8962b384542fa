#include "host/encoding/KelEncodingConverter.h"
#include "host/encoding/KelTextDecoder.h"
#include "host/encoding/charSetEncoding.h"
#include "host/encoding/convertText.h"
#include "host/options/BLIB.h"
#include "host/text/KelString.h"

#include <gtest/gtest.h>
#include <unicode/ucnv.h>

#include <random>
#include <set>
#include <string>
#include <string_view>
#include <utility>
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
    {"windows-932", "UTF-8", "\x83\x5C\\"sv, "\xE3\x82\xBD\\"sv, true},
    {"windows-932", "UTF-8", "\xB1\x83"sv, "\xEF\xBD\xB1" REPLACED, false},
    {"windows-1253", "UTF-8", "\xD2|\xD2"sv, REPLACED "|" REPLACED, false},
    {"windows-1255", "UTF-8", "\xD9\xDA"sv, REPLACED REPLACED, false},
    {"US-ASCII", "UTF-8", "\xE9x\xE9"sv, REPLACED "x" REPLACED, false},
    {"UTF-8", "UTF-16BE", "a\xFF\xE2\x82z"sv, "\0a\xFF\xFD\xFF\xFD\0z"sv, false},
    // Stateful: plain to look at, yet not.
    {"ISO-2022-JP", "UTF-8", "\x1B$B%=\x1B(B."sv, "\xE3\x82\xBD."sv, true},
    {"UTF-7", "UTF-8", "a+AOk-"sv, "a\xC3\xA9"sv, true},
    // Byte order marks go, and the text in front of none comes.
    {"UTF-16", "UTF-8", "\xFF\xFE\x61\0"sv, "a"sv, true},
    {"UTF-16", "UTF-8", "\0a"sv, "a"sv, true},
    {"UTF-16LE", "UTF-8", "\xFF\xFE\x61\0"sv, "a"sv, true},
    {"UTF-16BE", "UTF-8", "\xFE\xFF"sv, ""sv, true},
    {"ISO-2022-JP", "UTF-8", "\x1B(B"sv, ""sv, true}, // nothing is in front, whatever the one before has left
    {"UTF-16BE", "UTF-8", "\0a\xFE\xFF"sv, "a\xEF\xBB\xBF"sv, true},
    {"UTF-8", "windows-1252", "\xEF\xBB\xBF\xC3\xA9"sv, "\xE9"sv, true},
    {"UTF-8", "ISO-2022-JP", "\xE3\x82\xBD"sv, "\x1B$B%=\x1B(B"sv, true}, // what it ends with included
    {"UTF-8", "UTF-16", "a"sv, "\0a"sv, true},
    {"UTF-8", "UTF-32", "\xC3\xA9"sv, "\0\0\0\xE9"sv, true},
    {"UTF-16BE", "UTF-8", "\0a\0"sv, "a" REPLACED, false},
    {"UTF-16BE", "UTF-8", "\xD8\x01\0b"sv, REPLACED "b", false},
    // What the target does not have.
    {"UTF-8", "windows-1252", "a\xD0\x96"sv, "a\x1A"sv, false},
    // Neither in front nor behind is plain text.
    {"ibm-37", "UTF-8", "\x81"sv, "a"sv, true},
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

// Every character outside ASCII moves the conversion's buffers against the text by one more unit.
TEST(ConvertTextChunksTest, LosesNothingBetweenBuffers) {
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
    for (int i = 0; i < 5000; ++i) {
        pairs += "\xF0\x90\x80\x80";
        surrogates.append("\xD8\x00\xDC\x00", 4);
    }
    KelEncodingConverter wide("UTF-16BE");
    for (const std::size_t offset : {0U, 1U}) {
        KelString text{std::string(offset, '.') + pairs};
        EXPECT_TRUE(convertText(to, wide, text));
        ASSERT_TRUE(text.view() == std::string(offset, '\0') + std::string(offset, '.') + surrogates) << offset;
    }
}

TEST(ConvertTextChunksTest, DropsNoMoreThanOneByteOrderMark) {
    std::string marks;
    std::string converted;
    for (int i = 0; i < 5000; ++i) {
        marks += "\xFE\xFF";
        converted += i > 0 ? "\xEF\xBB\xBF" : "";
    }
    KelEncodingConverter from("UTF-16BE");
    KelEncodingConverter to("UTF-8");
    KelString text{std::string_view(marks)};
    EXPECT_TRUE(convertText(from, to, text));
    EXPECT_TRUE(text.view() == converted) << text.length();
}

TEST(KelEncodingConverterTest, EquivalenceIsThatOfCanonicalNames) {
    const KelEncodingConverter utf8("UTF-8");
    const struct {
        const char* name;
        const char* canonicalName;
    } rows[] = {{"utf8", "UTF-8"}, {"ibm-1208", "UTF-8"}, {"UTF-16", "UTF-16"}, {"unknown", ""}, {"", ""}};
    for (const auto& row : rows) {
        const KelEncodingConverter other(row.name);
        EXPECT_EQ(other.getEncodingName(), row.canonicalName);
        EXPECT_EQ(other.getHandle() == nullptr, other.getEncodingName().isEmpty()) << row.name;
        EXPECT_EQ(equivalentConverters(&other, &other), other.getHandle() != nullptr) << row.name;
        EXPECT_EQ(equivalentConverters(&other, &utf8), other.getEncodingName() == "UTF-8") << row.name;
        EXPECT_EQ(equivalentConverters(&utf8, &other), other.getEncodingName() == "UTF-8") << row.name;
    }
}

TEST(KelEncodingConverterTest, MovesItsHandle) {
    KelEncodingConverter source("windows-1251");
    UConverter* const handle = source.getHandle();
    KelEncodingConverter target("UTF-16");
    target = std::move(source);
    EXPECT_EQ(target.getHandle(), handle);
    EXPECT_EQ(target.getWriter(), handle);
    EXPECT_EQ(source.getHandle(), nullptr); // NOLINT(bugprone-use-after-move): that is the promise
}

struct PlainRow {
    const char* encoding;
    std::string_view text;
    bool plain;
};

TEST(KelEncodingConverterTest, PlainTextIsWhatTheEncodingLeavesAsItIs) {
    const PlainRow rows[] = {
        {"windows-1252", "Order::id\n\0\x7F"sv, true},
        {"windows-1252", "\xE9"sv, false},
        {"UTF-8", "Order"sv, true},
        {"windows-932", "C:\\Order~"sv, true},
        {"windows-932", "a\x1A"sv, false},
        {"UTF-16", "ab"sv, false},
        {"UTF-7", "Order.1"sv, true},
        {"UTF-7", "C+"sv, false},
        {"ISO-2022-KR", "ab"sv, false},
        {"ISO-2022-JP", "(B"sv, true},
        {"ISO-2022-JP", "\x1B(B"sv, false},
        {"HZ", "a~"sv, false},
        {"ebcdic-xml-us", "Order"sv, false},
        {"no-such-encoding", "Order"sv, false},
    };
    for (const PlainRow& row : rows) {
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

TEST(EncodingListTest, EveryEncodingHasAsciiAndIsNamedOnce) {
    const KelBridgeOptionEnumerationLiteral& list = BLIB::BP_ENCODING_ENUM;
    std::set<std::string> names;
    std::set<std::string> labels;
    for (int i = 0; i < list.getValueCount(); ++i) {
        const KelTextLiteral* value = list.getValue(i);
        ASSERT_NE(value, nullptr);
        const KelString& name = value->getIdentifier();
        EXPECT_TRUE(names.emplace(name.view()).second) << name.text();
        EXPECT_TRUE(labels.emplace(value->getText().view()).second) << value->getText().text();
        EXPECT_EQ(KelEncodingConverter(name).isPlainText("(object Petal"), name.view() != "unknown") << name.text();
    }
    EXPECT_EQ(list.getValue(0), &BLIB::BP_ENCODING_ENUM_WESTERN_EUROPEAN__WINDOWS_1252_);
    EXPECT_EQ(names.count("unknown"), 1U);
    EXPECT_EQ(list.getValue(list.getValueCount()), nullptr);
    EXPECT_EQ(list.getValue(-1), nullptr);
}

TEST(EncodingListTest, EveryEncodingTurnsAnyBytesIntoUtf8) {
    std::mt19937 random(5);
    KelEncodingConverter utf8("UTF-8");
    KelEncodingConverter utf16("UTF-16BE");
    for (int i = 0; i < BLIB::BP_ENCODING_ENUM.getValueCount(); ++i) {
        KelEncodingConverter from(BLIB::BP_ENCODING_ENUM.getValue(i)->getIdentifier());
        for (int length = 1; from.getHandle() != nullptr && length < 5000; length *= 3) {
            std::string bytes;
            while (bytes.size() < static_cast<std::size_t>(length)) {
                bytes += static_cast<char>(random());
            }
            KelString text{std::string_view(bytes)};
            convertText(from, utf8, text);
            EXPECT_TRUE(convertText(utf8, utf16, text)) << from.getEncodingName().text() << " " << length;
        }
    }
}

TEST(CharSetEncodingTest, CharacterSetsDecodeTheirLanguageByEncodingsOfTheList) {
    struct Row {
        int charSet;
        std::string_view letter;
        std::string_view expected;
    };
    const Row rows[] = {
        {0, "\xE9"sv, "é"sv},        {1, "\x80"sv, "€"sv},        {77, "\x8E"sv, "é"sv},
        {128, "\x83\x5C"sv, "ソ"sv}, {129, "\xB0\xA1"sv, "가"sv}, {134, "\xB0\xA1"sv, "啊"sv},
        {136, "\xA4\x40"sv, "一"sv}, {161, "\xE1"sv, "α"sv},      {162, "\xFE"sv, "ş"sv},
        {163, "\xD0"sv, "Đ"sv},      {177, "\xE0"sv, "א"sv},      {178, "\xC8"sv, "ب"sv},
        {186, "\xE0"sv, "ą"sv},      {204, "\xC6"sv, "Ж"sv},      {222, "\xA1"sv, "ก"sv},
        {238, "\xB3"sv, "ł"sv},      {255, "\x82"sv, "é"sv},
    };
    std::set<std::string_view> offered;
    for (int i = 0; i < BLIB::BP_ENCODING_ENUM.getValueCount(); ++i) {
        offered.insert(BLIB::BP_ENCODING_ENUM.getValue(i)->getIdentifier().view());
    }
    std::set<int> known = {2};
    KelEncodingConverter utf8("UTF-8");
    for (const Row& row : rows) {
        known.insert(row.charSet);
        KelEncodingConverter from(charSetEncoding(row.charSet));
        KelString text(row.letter);
        EXPECT_TRUE(convertText(from, utf8, text)) << row.charSet;
        EXPECT_EQ(text.view(), row.expected) << row.charSet;
    }
    for (int charSet = -1; charSet < 300; ++charSet) {
        const char* encoding = charSetEncoding(charSet);
        EXPECT_EQ(encoding != nullptr, known.contains(charSet)) << charSet;
        EXPECT_TRUE(encoding == nullptr || offered.contains(encoding)) << charSet;
    }
}

} // namespace
