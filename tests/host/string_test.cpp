#include "host/text/KelString.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

struct MidRow {
    const char* text;
    unsigned int start;
    unsigned int count;
    const char* expected;
};

TEST(KelStringTest, MidCutsWithinTheText) {
    const MidRow rows[] = {
        {"petal", 0, 5, "petal"}, {"petal", 0, 99, "petal"},     {"petal", 1, 3, "eta"}, {"petal", 4, 4294967295U, "l"},
        {"petal", 5, 1, ""},      {"petal", 4294967295U, 1, ""}, {"petal", 2, 0, ""},    {"", 0, 1, ""},
    };
    for (const MidRow& row : rows) {
        EXPECT_EQ(KelString(row.text).mid(row.start, row.count), row.expected)
            << row.text << " " << row.start << " " << row.count;
    }
}

TEST(KelStringTest, EveryEmptyStringSharesTheEmptyBuffer) {
    KelString emptied("text");
    emptied.empty();
    KelString initialised("text");
    initialised.init("", -1);
    KelString source("text");
    KelString target("old");
    target = std::move(source);
    EXPECT_EQ(target, "text");
    const KelString cut(target.mid(9, 9));
    const KelString* all[] = {&emptied, &initialised, &source, &cut, &emptyString}; // NOLINT: also what was moved from
    for (const KelString* empty : all) {
        EXPECT_EQ(empty->text(), KelString::emptyPtr);
        EXPECT_EQ(empty->length(), 0);
        EXPECT_EQ(*empty, emptyString);
    }
    EXPECT_EQ(KelString(static_cast<const char*>(nullptr)).text(), KelString::emptyPtr);
    source += "new";
    EXPECT_EQ(source, "new");
}

TEST(KelStringTest, KeepsNulBytesAndEndsWithOneMore) {
    KelString text("a\0b", 3);
    text += KelString("\0", 1);
    EXPECT_EQ(text.length(), 4);
    EXPECT_EQ(text.view(), std::string_view("a\0b\0", 4));
    EXPECT_EQ(text.text()[4], '\0');
    EXPECT_FALSE(text == KelString("a"));
}

TEST(KelStringTest, TakesPartsOfItself) {
    KelString text("Order");
    for (int i = 0; i < 6; ++i) {
        text.append(text.view());
    }
    EXPECT_EQ(text.length(), 5 * 64);
    text.init(text.text() + 5 * 63 + 1, 3);
    EXPECT_EQ(text, "rde");
    KelString& same = text;
    text = same;
    text += same;
    EXPECT_EQ(text, "rderde");
    std::string twin = "rderde";
    for (int i = 0; i < 6; ++i) {
        text.prepend(text.view().substr(1));
        twin.insert(0, std::string(twin, 1));
        EXPECT_EQ(text.view(), twin);
    }
}

TEST(KelStringTest, GrowsByteForByteLikeAStandardString) {
    KelString text;
    std::string twin;
    for (int i = 0; i < 3000; ++i) {
        const std::string piece(static_cast<std::size_t>(i % 7), static_cast<char>('a' + i % 26));
        if (i / 100 % 3 == 0) { // some hundreds in front, others behind
            text.prepend(piece);
            twin.insert(0, piece);
        } else {
            text.add(piece.c_str(), "::", nullptr);
            twin += piece + "::";
        }
        if (i % 500 == 250) {
            const KelString copy(text);
            text = copy; // back to a buffer without room
        }
        ASSERT_EQ(text.view(), twin);
        ASSERT_EQ(text.text()[text.length()], '\0');
    }
}

} // namespace
