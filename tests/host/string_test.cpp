#include "host/text/KelString.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

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

TEST(KelStringTest, CopiesShareTheirTextUntilOneChanges) {
    const KelString original("text");
    EXPECT_EQ(KelString(original).text(), original.text());
    std::mt19937 random(11);
    std::vector<KelString> texts(20);
    std::vector<std::string> twins(texts.size());
    for (int step = 0; step < 50'000; ++step) {
        const std::size_t one = random() % texts.size();
        const std::size_t other = random() % texts.size();
        const std::string piece(random() % 5, static_cast<char>('a' + random() % 26));
        switch (twins[one].size() > 500 ? 0 : random() % 6) {
        case 0:
            texts[one].init(piece);
            twins[one] = piece;
            break;
        case 1:
            texts[one].append(texts[other].view());
            twins[one] += std::string(twins[other]);
            break;
        case 2:
            texts[one].prepend(piece);
            twins[one].insert(0, piece);
            break;
        default: // also of itself
            texts[one] = texts[other];
            twins[one] = std::string(twins[other]);
        }
        ASSERT_EQ(texts[one].view(), twins[one]);
        ASSERT_EQ(texts[other].view(), twins[other]);
    }
}

TEST(KelStringTest, ThreadsMayCopyOneText) {
    const KelString shared("shared by all threads");
    const auto copyAndChange = [&shared] {
        for (int turn = 0; turn < 20'000; ++turn) {
            KelString copy(shared);
            const KelString kept(copy);
            copy.append("!");
            ASSERT_EQ(kept.view(), shared.view());
        }
    };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread) {
        threads.emplace_back(copyAndChange);
    }
    std::ranges::for_each(threads, &std::thread::join);
    EXPECT_EQ(shared, "shared by all threads");
}

} // namespace
