// The containers against a standard vector, which is slow but obvious.

#include "host/containers/KelHashtable.h"
#include "host/containers/KelNameLinkTree.h"
#include "host/containers/KelRBTreeIterator.h"
#include "host/containers/KelStringList.h"
#include "host/containers/KelVectorIterator.h"
#include "host/model/KelNote.h"
#include "host/model/links/KelPointerHash.h"
#include "host/text/KelString.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <limits>
#include <random>
#include <set>
#include <vector>

namespace {

int valueOf(const void* element) {
    return *static_cast<const int*>(element);
}

// Containers of pointers to int, compared by value; so is a key.
template <typename Container>
struct Ints : Container {
    using Container::Container;
    static constexpr bool isSorted = std::is_base_of_v<KelRBTree, Container>;
    int compare2Object(const void* left, const void* right) const override { return valueOf(left) - valueOf(right); }
    int compare2Key(const void* element, const void* key) const override { return compare2Object(element, key); }
};

struct IntTable : Ints<KelHashtable> {
    // Few hashes: different values share one.
    std::size_t hashObject(const void* element) const override {
        return static_cast<std::size_t>(valueOf(element)) % 3;
    }
    std::size_t hashKey(const void* key) const override { return hashObject(key); }
};

template <typename Container>
class KelContainerTest : public testing::Test {
protected:
    using Iterator = typename Container::Iterator;

    int pick(std::size_t bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
    /// The twin's element at a place, or null outside.
    [[nodiscard]] const void* at(int index) const {
        return index >= 0 && index < count() ? twin_[static_cast<std::size_t>(index)] : nullptr;
    }
    [[nodiscard]] int count() const { return static_cast<int>(twin_.size()); }
    /// The place of the next element of that value from a place on, in steps of 1 or -1; -1 for none.
    [[nodiscard]] int placeOf(int value, int from, int step) const {
        while (at(from) != nullptr && valueOf(at(from)) != value) {
            from += step;
        }
        return at(from) != nullptr ? from : -1;
    }
    Iterator iteratorAt(int index) {
        Iterator iterator(container_, false);
        if (index > 0) {
            iterator.next(index);
        }
        return iterator;
    }

    void add() {
        const int& value = values_.emplace_back(pick(9));
        const bool allowsDuplicates = pick(4) != 0;
        const int equal = placeOf(value, 0, 1);
        Iterator iterator(container_, true);
        const bool isAdded = allowsDuplicates || equal < 0;
        ASSERT_EQ(container_.add(&value, allowsDuplicates, &iterator), isAdded);
        ASSERT_EQ(iterator.get(), isAdded ? &value : at(equal));
        ASSERT_EQ(container_.contains(&value, &iterator), isAdded) << "equal is not the same";
        if (isAdded) {
            const auto after = std::ranges::upper_bound(twin_, value, {}, valueOf);
            twin_.insert(Container::isSorted ? after : twin_.end(), &value);
        }
    }

    void remove() {
        const int index = pick(twin_.size() + 1);
        Iterator iterator = iteratorAt(index);
        ASSERT_EQ(container_.remove(&iterator), index < count());
        if (index < count()) {
            twin_.erase(twin_.begin() + index);
            ASSERT_EQ(iterator.get(), at(index)) << "it moves to the element that followed";
        }
    }

    void step() {
        const int from = pick(twin_.size() + 1);
        const int many = std::numeric_limits<int>::max();
        const int steps = pick(9) == 0 ? many : 1 + pick(4);
        Iterator forward = iteratorAt(from);
        Iterator backward = forward;
        ASSERT_TRUE(forward == backward && forward.getContainer() == static_cast<const KelContainer*>(&container_));
        ASSERT_EQ(forward.next(steps), at(from) != nullptr && steps < count() - from);
        ASSERT_EQ(forward.get(), steps == many ? nullptr : at(from + steps));
        ASSERT_EQ(backward.previous(steps), at(from) != nullptr && steps <= from);
        ASSERT_EQ(backward.get(), at(from) != nullptr && steps <= from ? at(from - steps) : nullptr);
        ASSERT_EQ(forward != backward, forward.get() != backward.get()) << "nowhere is one place";
    }

    void find() {
        const int value = pick(10);
        const int first = placeOf(value, 0, 1);
        const int last = placeOf(value, count() - 1, -1);
        const int from = pick(twin_.size() + 1);
        Iterator iterator = iteratorAt(from);
        ASSERT_EQ(container_.findFirst(&value, &iterator), at(first));
        ASSERT_EQ(iterator.get(), at(first < 0 ? from : first)) << "a failed search leaves the iterator alone";
        ASSERT_EQ(iterator.findLast(&value), last >= 0);
        ASSERT_EQ(iterator.get(), at(last));
        ASSERT_EQ(iterator.findFirst(&value), first >= 0);
        ASSERT_EQ(iterator.get(), at(first));
        ASSERT_EQ(iterator.moveToLast(), count() > 0);
        ASSERT_EQ(iterator.get(), at(count() - 1));
        ASSERT_EQ(iterator.moveToFirst(), count() > 0);
        ASSERT_EQ(iterator.get(), at(0));
        if (at(from) != nullptr) {
            iterator = iteratorAt(from);
            iterator.findNext(&value);
            ASSERT_EQ(iterator.get(), at(placeOf(value, from + 1, 1)));
            iterator = iteratorAt(from);
            iterator.findPrevious(&value);
            ASSERT_EQ(iterator.get(), at(placeOf(value, from - 1, -1)));
        }
    }

    void expectWalks(const KelContainer& container) {
        std::vector<const void*> walked;
        for (const bool fromLast : {false, true}) {
            walked.clear();
            KelContainer::Iterator* iterator = container.newIterator(fromLast);
            while (**iterator != nullptr) {
                walked.insert(fromLast ? walked.begin() : walked.end(), iterator->get());
                fromLast ? iterator->previous(1) : iterator->next(1);
            }
            container.deleteIterator(iterator);
            ASSERT_EQ(walked, twin_);
        }
    }

    std::mt19937 random_{11};
    std::deque<int> values_;
    Container container_;
    std::vector<const void*> twin_;
};

using AllContainers = testing::Types<Ints<KelVector>, Ints<KelOrderedVector>, Ints<KelRBTree>, IntTable>;
TYPED_TEST_SUITE(KelContainerTest, AllContainers);

TYPED_TEST(KelContainerTest, BehavesAsAStandardVector) {
    for (int round = 0; round < 3000 && !this->HasFatalFailure(); ++round) {
        const bool adds = this->pick(2) == 0 || round < 20;
        adds ? this->add() : this->remove();
        this->step();
        this->find();
        ASSERT_EQ(this->container_.getCount(), this->count());
        if (round % 100 == 0) {
            this->expectWalks(this->container_);
            TypeParam other(this->container_);
            typename TypeParam::Iterator foreign(other, false);
            ASSERT_FALSE(this->container_.remove(&foreign) || this->container_.remove(nullptr));
            ASSERT_FALSE(this->container_.add(nullptr, true, &foreign) || this->container_.contains(nullptr, &foreign));
            this->container_.contains(this->at(1), &foreign);
            ASSERT_EQ(foreign.get(), this->at(0)) << "the iterator of another container";
            this->container_.empty();
            ASSERT_FALSE(foreign == typename TypeParam::Iterator(this->container_, false) && this->count() > 0);
            this->expectWalks(other);
            this->container_ = other;
        }
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
    constexpr int rows[][4] = {// sought, from, next, previous
                               {4, 0, 2, -1}, {4, -5, 0, -1}, {4, 99, -1, 4},     {4, highest, -1, 4},
                               {4, 4, -1, 2}, {2, 0, 1, -1},  {2, lowest, 1, -1}, {9, 2, -1, -1}};
    for (const auto& [sought, from, next, previous] : rows) {
        EXPECT_EQ(vector.findNextElement(&sought, from), next) << sought << " from " << from;
        EXPECT_EQ(vector.findPreviousElement(&sought, from), previous) << sought << " from " << from;
    }
    EXPECT_EQ(vector.findLastElement(&values[1]), 3);
    Ints<KelVector> copy(vector);
    EXPECT_TRUE(copy == vector && copy.removeElement(1) && copy != vector);
    EXPECT_FALSE(vector.removeElement(-1) || vector.removeElement(5));
    EXPECT_TRUE(vector[5] == nullptr && vector[-1] == nullptr);
}

TEST(KelVectorTest, ComparesAddressesByDefault) {
    const int values[] = {4, 4};
    KelVector vector;
    EXPECT_TRUE(vector.add(&values[0], false, nullptr) && vector.add(&values[1], false, nullptr));
    EXPECT_EQ(vector.findFirst(&values[1], nullptr), &values[1]);
    // Addresses farther apart than an int reaches.
    const auto* low = reinterpret_cast<const void*>(std::uintptr_t{0x10});
    const auto* high = reinterpret_cast<const void*>(std::uintptr_t{0x7F0000000010});
    EXPECT_LT(vector.compare2Object(low, high), 0);
    EXPECT_GT(vector.compare2Key(high, low), 0);
}

TEST(KelStringListTest, KeepsTheChosenOrderAndFindsByText) {
    const KelString a("a");
    const KelString b("b");
    const KelString otherB("b");
    KelStringList list;
    EXPECT_TRUE(list.insertElement(&b, 0) && list.insertElement(&a, 1) && list.insertElement(&otherB, 0));
    EXPECT_FALSE(list.insertElement(&a, -1) || list.insertElement(&a, 4) || list.insertElement(nullptr, 0));
    EXPECT_TRUE(list.getCount() == 3 && list[1] == &b && list[2] == &a);
    EXPECT_EQ(list.findFirst(&b, nullptr), &otherB);
    EXPECT_FALSE(list.addElement(&b, false));
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
        EXPECT_EQ(tree.findFirst(&names[i], nullptr), &notes[i == 4 ? 1 : i]) << i;
    }
}

// Both matter to the time of a look-up only: objects of a page are neighbours in a table, and pages are anywhere.
TEST(KelPointerHashTest, KeepsObjectsOfAPageTogetherAndSpreadsPages) {
    constexpr std::uintptr_t first = 0x5555'5557'0000;
    constexpr std::size_t page = 4096;
    constexpr std::size_t tableSize = 1U << 17;
    const auto placeOf = [](std::uintptr_t address) {
        return KelPointerHash()(reinterpret_cast<const void*>(address)) % tableSize;
    };
    std::set<std::size_t> places;
    for (std::uintptr_t address = first; address < first + 1024 * page; address += 64) {
        places.insert(placeOf(address));
        EXPECT_EQ((placeOf(address) - placeOf(address / page * page)) % tableSize, address % page / 64);
    }
    EXPECT_GT(places.size(), 50'000U); // of 65,536; drawn at random, 51,600 would be different
}

} // namespace
