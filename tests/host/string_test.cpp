#include "host/text/KelString.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>

namespace {

TEST(KelStringTest, EveryEmptyStringSharesTheEmptyBuffer) {
    KelString emptied("text");
    emptied.empty();
    KelString source("text");
    KelString target("old");
    target = std::move(source);
    EXPECT_EQ(target, "text");
    const KelString cut(target.mid(4294967295U, 9));
    const KelString* all[] = {&emptied, &source, &cut, &emptyString}; // NOLINT: also what was moved from
    for (const KelString* empty : all) {
        EXPECT_EQ(empty->text(), KelString::emptyPtr);
        EXPECT_EQ(empty->length(), 0);
    }
    EXPECT_EQ(KelString(static_cast<const char*>(nullptr)).text(), KelString::emptyPtr);
}

TEST(KelStringTest, ChangesLikeAStandardString) {
    std::mt19937 random(7);
    KelString text;
    std::string twin;
    for (int step = 0; step < 20'000; ++step) {
        const std::size_t start = random() % (twin.size() + 1);
        const std::size_t count = random() % 3 == 0 ? 4294967295U : random() % 9;
        const std::string part = twin.substr(start, count);
        const std::string piece(random() % 7, static_cast<char>(random() % 26)); // NULs, too
        ASSERT_EQ(text.mid(static_cast<unsigned>(start), static_cast<unsigned>(count)).view(), part);
        switch (twin.size() > 2000 ? 0 : random() % 7) {
        case 0:
            text.init(text.text() + start, static_cast<int>(part.size())); // of itself
            twin = part;
            break;
        case 1:
            text.prepend(piece);
            twin.insert(0, piece);
            break;
        case 2:
            text.append(text.view().substr(start, count));
            twin += part;
            break;
        case 3:
            text.prepend(text.view().substr(start, count));
            twin.insert(0, part);
            break;
        case 4:
            text = KelString(text); // to a buffer without room
            text.add("::", ".", nullptr);
            twin += "::.";
            break;
        default:
            text += KelString(std::string_view(piece));
            twin += piece;
        }
        ASSERT_EQ(text.view(), twin);
        ASSERT_EQ(text.text()[text.length()], '\0');
    }
}

} // namespace
