#include "host/containers/KelHashtable.h"
#include "host/containers/KelNameLinkTree.h"
#include "host/containers/KelRBTreeIterator.h"
#include "host/containers/KelStringList.h"
#include "host/containers/KelVectorIterator.h"
#include "host/model/KelNote.h"
#include "host/text/KelString.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

int valueOf(const void* element) {
    return element != nullptr ? *static_cast<const int*>(element) : -1;
}

// Containers of pointers to int, compared by value; so is a key.
template <typename Container>
struct Ints : Container {
    using Container::Container;
    int compare2Object(const void* left, const void* right) const override { return valueOf(left) - valueOf(right); }
    int compare2Key(const void* element, const void* key) const override { return compare2Object(element, key); }
};

struct IntTable : Ints<KelHashtable> {
    // Few hashes, so that different values share one.
    std::size_t hashObject(const void* element) const override {
        return static_cast<std::size_t>(valueOf(element)) % 3;
    }
    std::size_t hashKey(const void* key) const override { return hashObject(key); }
};

template <typename Container>
class KelContainerTest : public testing::Test {
protected:
    using Iterator = typename Container::Iterator;

    // Equal values side by side, so that order of adding and sorted order are the same.
    KelContainerTest() {
        for (const int& value : values) {
            container.add(&value, true, nullptr);
        }
    }

    static std::string walk(const KelContainer& container, bool fromLast) {
        std::string walked;
        KelContainer::Iterator* iterator = container.newIterator(fromLast);
        while (**iterator != nullptr) {
            walked += std::to_string(valueOf(iterator->get())) + " ";
            fromLast ? iterator->previous(1) : iterator->next(1);
        }
        container.deleteIterator(iterator);
        return walked;
    }

    const int values[6] = {1, 3, 3, 3, 5, 7};
    Container container;
};

using AllContainers = testing::Types<Ints<KelVector>, Ints<KelOrderedVector>, Ints<KelRBTree>, IntTable>;
TYPED_TEST_SUITE(KelContainerTest, AllContainers);

TYPED_TEST(KelContainerTest, WalksBothWays) {
    EXPECT_EQ(this->walk(this->container, false), "1 3 3 3 5 7 ");
    EXPECT_EQ(this->walk(this->container, true), "7 5 3 3 3 1 ");
    EXPECT_EQ(this->walk(TypeParam(), false), "");
    EXPECT_EQ(this->walk(TypeParam(), true), "");
}

TYPED_TEST(KelContainerTest, StepsStopOutsideAndStayThere) {
    struct Row {
        int from;
        int steps; // negative: towards the first
        int expected;
    };
    const int many = std::numeric_limits<int>::max();
    const Row rows[] = {{0, 5, 7},  {0, 6, -1},  {4, 1, 7},  {4, many, -1},
                        {5, -5, 1}, {5, -6, -1}, {5, -1, 5}, {4, -many, -1}};
    for (const Row& row : rows) {
        typename TypeParam::Iterator iterator(this->container, false);
        if (row.from > 0) {
            iterator.next(row.from);
        }
        const bool inside = row.steps > 0 ? iterator.next(row.steps) : iterator.previous(-row.steps);
        EXPECT_EQ(inside, row.expected >= 0);
        EXPECT_EQ(valueOf(iterator.get()), row.expected) << row.from << " " << row.steps;
        if (!inside) {
            EXPECT_FALSE(iterator.next(1) || iterator.previous(1));
            EXPECT_EQ(iterator.get(), nullptr);
        }
    }
}

TYPED_TEST(KelContainerTest, FindsTheFirstAndTheLastOfEqualElementsAndThoseBetween) {
    const int three = 3;
    typename TypeParam::Iterator iterator(this->container, false);
    std::vector<const void*> found;
    for (bool more = iterator.findFirst(&three); more; more = iterator.findNext(&three)) {
        found.push_back(iterator.get());
    }
    const std::vector<const void*> forward = {&this->values[1], &this->values[2], &this->values[3]};
    EXPECT_EQ(found, forward);
    found.clear();
    for (bool more = iterator.findLast(&three); more; more = iterator.findPrevious(&three)) {
        found.insert(found.begin(), iterator.get());
    }
    EXPECT_EQ(found, forward);
    EXPECT_EQ(this->container.findFirst(&three, &iterator), &this->values[1]);
    EXPECT_EQ(iterator.get(), &this->values[1]);

    const int absent = 4;
    EXPECT_EQ(this->container.findFirst(&absent, &iterator), nullptr);
    EXPECT_EQ(iterator.get(), &this->values[1]) << "a failed search must leave the iterator alone";
    EXPECT_FALSE(iterator.findLast(&absent));
    EXPECT_EQ(iterator.get(), nullptr);
}

TYPED_TEST(KelContainerTest, RefusesNullAndUnwantedDuplicates) {
    const int another = 3;
    typename TypeParam::Iterator iterator(this->container, true);
    EXPECT_FALSE(this->container.add(nullptr, true, &iterator));
    EXPECT_FALSE(this->container.add(&another, false, &iterator));
    EXPECT_EQ(iterator.get(), &this->values[1]);
    EXPECT_EQ(this->container.getCount(), 6);
    EXPECT_FALSE(this->container.contains(&another, &iterator)) << "equal is not the same";
    EXPECT_FALSE(this->container.contains(nullptr, &iterator));
    EXPECT_TRUE(this->container.contains(&this->values[3], &iterator));
    EXPECT_EQ(iterator.get(), &this->values[3]);
    EXPECT_TRUE(this->container.add(&another, true, &iterator));
    EXPECT_EQ(iterator.get(), &another);
}

TYPED_TEST(KelContainerTest, RemovingMovesToTheElementThatFollowed) {
    typename TypeParam::Iterator iterator(this->container, false);
    iterator.next(2);
    ASSERT_TRUE(this->container.remove(&iterator));
    EXPECT_EQ(iterator.get(), &this->values[3]);
    EXPECT_EQ(this->walk(this->container, false), "1 3 3 5 7 ");
    iterator.moveToLast();
    ASSERT_TRUE(this->container.remove(&iterator));
    EXPECT_EQ(iterator.get(), nullptr);
    EXPECT_FALSE(this->container.remove(&iterator));
    EXPECT_FALSE(this->container.remove(nullptr));
    EXPECT_EQ(this->walk(this->container, true), "5 3 3 1 ");
    this->container.empty();
    EXPECT_EQ(this->container.getCount(), 0);
    EXPECT_FALSE(iterator.moveToFirst() || iterator.moveToLast());
}

TYPED_TEST(KelContainerTest, LeavesTheIteratorsOfOtherContainersAlone) {
    const TypeParam other(this->container);
    typename TypeParam::Iterator foreign(other, true);
    const typename TypeParam::Iterator before(foreign);
    const int key = 3;
    EXPECT_FALSE(this->container.remove(&foreign));
    EXPECT_EQ(this->container.findFirst(&key, &foreign), &this->values[1]);
    EXPECT_TRUE(this->container.contains(&this->values[0], &foreign));
    EXPECT_TRUE(foreign == before);
    EXPECT_EQ(this->container.getCount(), 6);
}

TYPED_TEST(KelContainerTest, IteratorsAreEqualAtOnePlaceOfOneContainer) {
    const TypeParam other(this->container);
    typename TypeParam::Iterator first(this->container, false);
    typename TypeParam::Iterator second(this->container, true);
    EXPECT_TRUE(first != second);
    second = first;
    EXPECT_TRUE(first == second);
    EXPECT_FALSE(first == typename TypeParam::Iterator(other, false));
    first.next(6);
    second.previous(1);
    EXPECT_TRUE(first == second) << "nowhere is one place, whichever end was passed";
    EXPECT_EQ(first.getContainer(), static_cast<const KelContainer*>(&this->container));
}

TEST(KelHashtableTest, StaysWholeUnderRandomAddingAndRemoving) {
    std::mt19937 random(11);
    std::vector<int> values(200);
    IntTable table;
    std::vector<const void*> twin;
    for (int i = 0; i < 4000; ++i) {
        int* const element = &values[random() % values.size()];
        const auto place = std::find(twin.begin(), twin.end(), element);
        KelHashtable::Iterator iterator(table, false);
        ASSERT_EQ(iterator.moveTo(element), place != twin.end());
        if (place != twin.end()) {
            const auto following = twin.erase(place);
            ASSERT_TRUE(table.remove(&iterator));
            ASSERT_EQ(iterator.get(), following != twin.end() ? *following : nullptr);
        } else {
            *element = static_cast<int>(random() % 20);
            twin.push_back(element);
            ASSERT_TRUE(table.add(element, true, &iterator));
        }
        const auto equal =
            std::find_if(twin.begin(), twin.end(), [&](const void* held) { return valueOf(held) == valueOf(element); });
        ASSERT_EQ(table.findFirst(element, nullptr), equal != twin.end() ? *equal : nullptr);
        ASSERT_EQ(table.getCount(), static_cast<int>(twin.size()));
    }
}

TEST(KelVectorTest, FindsByIndex) {
    const int values[] = {4, 2, 4, 2, 4};
    Ints<KelVector> vector;
    for (const int& value : values) {
        vector.addElement(&value, true);
    }
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    const struct {
        int sought;
        int from;
        int next;
        int previous;
    } rows[] = {{4, 0, 2, -1}, {4, -5, 0, -1}, {4, 99, -1, 4},     {4, highest, -1, 4},
                {4, 4, -1, 2}, {2, 0, 1, -1},  {2, lowest, 1, -1}, {9, 2, -1, -1}};
    for (const auto& row : rows) {
        EXPECT_EQ(vector.findNextElement(&row.sought, row.from), row.next) << row.sought << " from " << row.from;
        EXPECT_EQ(vector.findPreviousElement(&row.sought, row.from), row.previous)
            << row.sought << " from " << row.from;
    }
    EXPECT_FALSE(vector.removeElement(-1) || vector.removeElement(5));
    EXPECT_TRUE(vector[5] == nullptr && vector[-1] == nullptr);

    Ints<KelVector> copy;
    copy = vector;
    EXPECT_TRUE(copy == vector);
    EXPECT_TRUE(copy.removeElement(1));
    EXPECT_TRUE(copy != vector);
    EXPECT_EQ(copy[1], &values[2]);
}

TEST(KelVectorTest, ComparesAddressesUnlessToldOtherwise) {
    const int values[] = {4, 4};
    KelVector vector;
    vector.add(&values[0], false, nullptr);
    EXPECT_TRUE(vector.add(&values[1], false, nullptr));
    EXPECT_EQ(vector.findFirst(&values[1], nullptr), &values[1]);
    EXPECT_LT(vector.compare2Object(&values[0], &values[1]), 0);
    EXPECT_GT(vector.compare2Key(&values[1], &values[0]), 0);
    // Addresses farther apart than an int reaches.
    const auto* low = reinterpret_cast<const void*>(std::uintptr_t{0x10});
    const auto* high = reinterpret_cast<const void*>(std::uintptr_t{0x7F0000000010});
    EXPECT_LT(vector.compare2Object(low, high), 0);
    EXPECT_GT(vector.compare2Object(high, low), 0);
}

TEST(KelStringListTest, KeepsTheChosenOrderAndFindsByText) {
    const KelString a("a");
    const KelString b("b");
    const KelString otherB("b");
    KelStringList list;
    EXPECT_TRUE(list.insertElement(&b, 0));
    EXPECT_TRUE(list.insertElement(&a, 1));
    EXPECT_TRUE(list.insertElement(&otherB, 0));
    EXPECT_FALSE(list.insertElement(&a, -1) || list.insertElement(&a, 4) || list.insertElement(nullptr, 0));
    const void* expected[] = {&otherB, &b, &a};
    ASSERT_EQ(list.getCount(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(list[i], expected[i]) << i;
    }
    EXPECT_EQ(list.findFirst(&b, nullptr), &otherB);
    EXPECT_EQ(list.findLastElement(&otherB), 1);
    EXPECT_FALSE(list.addElement(&b, false));
    KelVector::Iterator iterator(list, false);
    EXPECT_TRUE(list.remove(&iterator));
    EXPECT_EQ(iterator.get(), &b);
}

TEST(KelNameLinkTreeTest, OrdersByNameByteForByteAndKeepsEqualNamesInTheOrderOfAdding) {
    KelNote notes[6];
    const KelString names[6] = {"b", "a", KelString("a\0", 2), "B", "a", "\xE9"};
    const int expected[6] = {3, 1, 4, 2, 0, 5};
    KelNameLinkTree tree;
    for (int i = 0; i < 6; ++i) {
        notes[i].setName(names[i]);
        tree.addElement(&notes[i], true);
    }
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(tree[i], &notes[expected[i]]) << i;
        const int firstOfName = i == 4 ? 1 : i;
        EXPECT_EQ(tree.findFirst(&names[i], nullptr), &notes[firstOfName]) << i;
    }
    EXPECT_EQ(tree.findFirst(&emptyString, nullptr), nullptr);
}

} // namespace
