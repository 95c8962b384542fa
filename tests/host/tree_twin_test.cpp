// The search tree against a sorted vector, which is slow but obvious.

#include "host/containers/KelLinkTree.h"
#include "host/containers/KelRBTreeIterator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <numeric>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Item {
    int key;
};

class KeyTree : public KelLinkTree {
public:
    int compare2Object(const void* left, const void* right) const override {
        return compare2Key(left, &static_cast<const Item*>(right)->key);
    }
    int compare2Key(const void* element, const void* key) const override {
        ++comparisons;
        return static_cast<const Item*>(element)->key - *static_cast<const int*>(key);
    }

    mutable long comparisons = 0;
};

class TreeAndTwin {
public:
    explicit TreeAndTwin(unsigned int seed) : random_(seed) {}

    void step() {
        const int choice = pick(10);
        if (choice < 4 || twin_.empty()) {
            add(choice != 0);
        } else if (choice < 6) {
            remove(choice == 5);
        } else if (choice == 6) {
            changeKey();
        } else {
            find(pick(keys));
        }
    }

    void checkAll() {
        ASSERT_EQ(tree_.getCount(), static_cast<int>(twin_.size()));
        KelRBTree::Node* node = tree_.firstNode();
        for (int i = 0; i < tree_.getCount(); ++i, node = KelRBTree::nextNode(node)) {
            const Item* expected = twin_[static_cast<std::size_t>(i)].item;
            ASSERT_EQ(KelRBTree::element(node), expected);
            ASSERT_EQ(tree_[i], expected);
            ASSERT_EQ(KelRBTree::getIndex(node), i);
            ASSERT_EQ(twin_[static_cast<std::size_t>(i)].node, node) << "the handle went stale";
            ASSERT_EQ(KelRBTree::previousNode(node), i > 0 ? tree_.getNode(i - 1) : nullptr);
        }
        ASSERT_EQ(node, nullptr);
    }

private:
    static constexpr int keys = 12;
    struct Held {
        Item* item;
        KelRBTree::Node* node;
    };

    int pick(int bound) { return static_cast<int>(random_() % static_cast<unsigned int>(bound)); }

    auto range(int key) {
        return std::equal_range(twin_.begin(), twin_.end(), key,
                                [](const auto& left, const auto& right) { return keyOf(left) < keyOf(right); });
    }
    static int keyOf(const Held& held) { return held.item->key; }
    static int keyOf(int key) { return key; }

    void add(bool allowDuplicates) {
        Item& item = items_.emplace_back(Item{pick(keys)});
        const auto [first, last] = range(item.key);
        const bool expected = allowDuplicates || first == last;
        KelRBTree::Iterator iterator(tree_, false);
        ASSERT_EQ(tree_.add(&item, allowDuplicates, &iterator), expected);
        if (expected) {
            ASSERT_EQ(iterator.get(), &item);
            twin_.insert(last, Held{&item, iterator.getNode()});
        } else {
            ASSERT_EQ(iterator.get(), first->item);
        }
    }

    void remove(bool throughIterator) {
        const int index = pick(static_cast<int>(twin_.size()));
        const auto place = twin_.begin() + index;
        ASSERT_EQ(tree_.getNodeOf(place->item), place->node);
        if (throughIterator) {
            KelRBTree::Iterator iterator(tree_, false);
            iterator.moveTo(place->node);
            ASSERT_TRUE(tree_.remove(&iterator));
            const auto following = twin_.erase(place);
            ASSERT_EQ(iterator.get(), following != twin_.end() ? following->item : nullptr);
        } else {
            const Item* item = place->item;
            ASSERT_TRUE(tree_.removeElement(index));
            twin_.erase(place);
            ASSERT_FALSE(tree_.containsElement(item));
        }
    }

    void changeKey() {
        const auto place = twin_.begin() + pick(static_cast<int>(twin_.size()));
        const Held held = *place;
        twin_.erase(place);
        tree_.detachNode(held.node);
        held.item->key = pick(keys);
        tree_.attachNode(held.node);
        twin_.insert(range(held.item->key).second, held);
    }

    void find(int key) {
        const auto [first, last] = range(key);
        const bool found = first != last;
        const int firstIndex = found ? static_cast<int>(first - twin_.begin()) : -1;
        const int lastIndex = found ? static_cast<int>(last - twin_.begin()) - 1 : -1;
        const Item sought{key};
        ASSERT_EQ(tree_.findFirstNode(&key), found ? first->node : nullptr);
        ASSERT_EQ(tree_.findLastNode(&key), found ? (last - 1)->node : nullptr);
        ASSERT_EQ(tree_.findFirst(&key, nullptr), found ? first->item : nullptr);
        ASSERT_EQ(tree_.findFirstElement(&sought), firstIndex);
        ASSERT_EQ(tree_.findLastElement(&sought), lastIndex);
        ASSERT_FALSE(tree_.containsElement(&sought));
        const int from = pick(static_cast<int>(twin_.size()) + 2) - 1;
        const bool isAfter = found && from < lastIndex;
        const bool isBefore = found && from > firstIndex;
        ASSERT_EQ(tree_.findNextElement(&sought, from), isAfter ? std::max(firstIndex, from + 1) : -1);
        ASSERT_EQ(tree_.findPreviousElement(&sought, from), isBefore ? std::min(lastIndex, from - 1) : -1);
        if (from >= 0 && from < tree_.getCount()) {
            KelRBTree::Iterator iterator(tree_, false);
            iterator.moveTo(tree_.getNode(from));
            ASSERT_EQ(iterator.findNext(&key), isAfter);
            ASSERT_EQ(iterator.get(), tree_[isAfter ? std::max(firstIndex, from + 1) : -1]);
            iterator.moveTo(tree_.getNode(from));
            ASSERT_EQ(iterator.findPrevious(&key), isBefore);
            ASSERT_EQ(iterator.get(), tree_[isBefore ? std::min(lastIndex, from - 1) : -1]);
        }
    }

    std::mt19937 random_;
    std::deque<Item> items_;
    KeyTree tree_;
    std::vector<Held> twin_;
};

TEST(KelRBTreeTest, BehavesAsASortedVectorUnderRandomOperations) {
    for (unsigned int seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TreeAndTwin both(seed);
        for (int i = 0; i < 250; ++i) {
            both.step();
            both.checkAll();
            if (HasFatalFailure()) {
                return;
            }
        }
    }
}

// A red-black tree of n elements is at most 2 * log2(n + 1) high, and every lookup compares once per level.
void expectBalanced(const KeyTree& tree, int key) {
    const double height = 2 * std::log2(tree.getCount() + 1.0);
    tree.comparisons = 0;
    static_cast<void>(tree.findFirstNode(&key));
    EXPECT_LE(static_cast<double>(tree.comparisons), height) << "of " << tree.getCount() << " key " << key;
}

TEST(KelRBTreeTest, StaysBalancedInAnyOrder) {
    constexpr int count = 20000;
    std::vector<int> ascending(count);
    std::iota(ascending.begin(), ascending.end(), 0);
    std::vector<int> shuffled(ascending);
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(7));
    for (const auto& keys :
         {ascending, std::vector<int>(ascending.rbegin(), ascending.rend()), shuffled, std::vector<int>(count, 0)}) {
        SCOPED_TRACE(keys[0]);
        std::deque<Item> items;
        KeyTree tree;
        for (const int key : keys) {
            tree.comparisons = 0;
            tree.addElement(&items.emplace_back(Item{key}), true);
            ASSERT_LE(static_cast<double>(tree.comparisons), 2 * std::log2(tree.getCount() + 1.0));
        }
        for (int key = -1; key <= count; key += 97) {
            expectBalanced(tree, key);
        }
        while (tree.getCount() > count / 50) { // one side only, which a tree without repair would lean on
            tree.comparisons = 0;
            ASSERT_TRUE(tree.removeElement(0));
            ASSERT_EQ(tree.comparisons, 0);
        }
        for (int key = count - count / 50; key < count; ++key) {
            expectBalanced(tree, key);
        }
    }
}

TEST(KelRBTreeTest, AComparisonThatThrowsLeavesTheTreeAsItWas) {
    class Failing : public KelRBTree {
    public:
        int compare2Object(const void*, const void*) const override { throw std::runtime_error("no order"); }
    };
    const int first = 1;
    const int second = 2;
    Failing tree;
    tree.addNode(&first);
    EXPECT_THROW(tree.addNode(&second), std::runtime_error);
    EXPECT_THROW(tree.add(&second, false, nullptr), std::runtime_error);
    EXPECT_EQ(tree.getCount(), 1);
    EXPECT_EQ(tree.firstNode(), tree.lastNode());
}

} // namespace
