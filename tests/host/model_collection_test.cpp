// The collections at "many" ends against a vector, which is slow but obvious, while memory runs out now and then.

#include "ModelClasses.h"
#include "host/model/KelConcreteType.h"
#include "host/model/KelModel.h"
#include "host/model/KelPackage.h"
#include "host/model/KelRenaming.h"
#include "host/model/links/KelFewLinks.h"
#include "host/model/links/KelLinks.h"
#include "support/memory/MemoryShortage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <new>
#include <ostream>
#include <random>
#include <span>
#include <string>

namespace {

struct TwinRow {
    KelElementType holder;
    const char* relation;
    bool byName;
};

void PrintTo(const TwinRow& row, std::ostream* out) {
    *out << row.relation << (row.byName ? " by name" : " by adding");
}

class ModelCollectionTwin : public testing::TestWithParam<TwinRow> {
protected:
    ModelCollectionTwin() {
        for (int made = 0; made < 120; ++made) {
            objects_.push_back(makeObject(relation_.targetType));
            objects_.back()->setName(someName());
        }
    }

    int pick(std::size_t count) { return static_cast<int>(random_() % static_cast<unsigned int>(count)); }
    KelString someName() { return KelString(std::string(1, static_cast<char>('a' + pick(9))).c_str()); }

    void placeInTwin(KelObject* object) {
        const auto place = std::upper_bound(twin_.begin(), twin_.end(), object, [](auto* left, auto* right) {
            return left->getName().view() < right->getName().view();
        });
        twin_.insert(GetParam().byName ? place : twin_.end(), object);
    }

    void add() {
        KelObject* object = objects_[static_cast<std::size_t>(pick(objects_.size()))].get();
        const bool isNew = std::find(twin_.begin(), twin_.end(), object) == twin_.end();
        bool isLinked = false;
        for (long allowed = pick(3); isNew && !isLinked; ++allowed) {
            try {
                const MemoryShortage shortage(allowed);
                isLinked = relation_.link(holder_.get(), object);
            } catch (const std::bad_alloc&) {
                ++failures_;
                ASSERT_EQ(links_.count(), static_cast<int>(twin_.size()));
                ASSERT_EQ(relation_.count(*object, false), 0);
            }
        }
        ASSERT_FALSE(!isNew && relation_.link(holder_.get(), object));
        if (isNew) {
            placeInTwin(object);
        }
    }

    void remove() {
        if (!twin_.empty()) {
            const int places[] = {0, static_cast<int>(twin_.size()) - 1, pick(twin_.size())};
            const auto place = twin_.begin() + places[pick(std::size(places))];
            bool isUnlinked = false;
            {
                const MemoryShortage shortage(0);
                isUnlinked = relation_.unlink(holder_.get(), *place);
            }
            ASSERT_TRUE(isUnlinked);
            twin_.erase(place);
        }
    }

    void rename() {
        KelObject* object = objects_[static_cast<std::size_t>(pick(objects_.size()))].get();
        const KelString name = someName();
        const auto place = std::find(twin_.begin(), twin_.end(), object);
        const bool moves = GetParam().byName && place != twin_.end() && !(object->getName() == name);
        if (moves) {
            twin_.erase(place);
        }
        object->setName(name);
        if (moves) {
            placeInTwin(object);
        }
    }

    /// Renames up to `most` at once. In the twin it is done one after the other; without memory none is renamed.
    void renameSeveral(std::size_t most) {
        KelRenaming renaming;
        std::vector<KelObject*> moved;
        std::ranges::shuffle(objects_, random_);
        for (const auto& object : std::span(objects_).first(static_cast<std::size_t>(pick(most)))) {
            KelString name = someName();
            const bool isHeld = std::ranges::find(twin_, object.get()) != twin_.end();
            if (isHeld && GetParam().byName && !(name == object->getName())) {
                moved.push_back(object.get());
            }
            renaming.add(*object, std::move(name));
        }
        try {
            const MemoryShortage shortage(pick(3));
            renaming.carryOut();
        } catch (const std::bad_alloc&) {
            ++failures_;
            checkAll();
            renaming.carryOut();
        }
        std::erase_if(twin_, [&](KelObject* object) { return std::ranges::find(moved, object) != moved.end(); });
        std::ranges::for_each(moved, [&](KelObject* object) { placeInTwin(object); });
    }

    void find() {
        const KelString name = someName();
        const int from = pick(twin_.size() + 3) - 1;
        const auto start = twin_.begin() + std::clamp(from, 0, static_cast<int>(twin_.size()));
        const auto place = std::find_if(start, twin_.end(), [&](auto* object) { return object->getName() == name; });
        const bool found = place != twin_.end();
        int named = from;
        int arrayed = from;
        ASSERT_EQ(links_.findNamed(name, &named), found ? *place : nullptr);
        ASSERT_EQ(holder_->_getn(&links_.array(), name, &arrayed), found ? *place : nullptr);
        ASSERT_EQ(named, found ? place - twin_.begin() : from);
        ASSERT_EQ(arrayed, named);
    }

    void findFirst() {
        const KelString name = someName();
        const auto first = std::ranges::find_if(twin_, [&](auto* object) { return object->getName() == name; });
        ASSERT_EQ(links_.findNamed(name), first != twin_.end() ? *first : nullptr);
    }

    void look() {
        KelObject& object = *objects_[static_cast<std::size_t>(pick(objects_.size()))];
        const auto place = std::find(twin_.begin(), twin_.end(), &object);
        const int index = place != twin_.end() ? static_cast<int>(place - twin_.begin()) : -1;
        ASSERT_EQ(links_.holds(object), index >= 0);
        ASSERT_EQ(links_.indexOf(object), index);
        ASSERT_EQ(links_[index], index >= 0 ? &object : nullptr);
    }

    /// Without memory for a tree or an index.
    void lookInShortage() {
        KelObject& object = *objects_[static_cast<std::size_t>(pick(objects_.size()))];
        const auto place = std::find(twin_.begin(), twin_.end(), &object);
        bool isHeld = false;
        int index = 0;
        {
            const MemoryShortage shortage(0);
            isHeld = links_.holds(object);
            index = links_.indexOf(object);
        }
        ASSERT_EQ(isHeld, place != twin_.end());
        ASSERT_EQ(index, isHeld ? static_cast<int>(place - twin_.begin()) : -1);
    }

    void checkAll() {
        ASSERT_EQ(links_.count(), static_cast<int>(twin_.size()));
        ASSERT_EQ(links_[links_.count()], nullptr);
        std::size_t index = 0;
        for (KelObject* object : links_) {
            ASSERT_EQ(object, twin_[index]);
            ASSERT_EQ(links_.array()[static_cast<int>(index)], twin_[index]);
            ++index;
        }
    }

    std::mt19937 random_{2206};
    const KelRelation& relation_ = relationOf(GetParam().holder, GetParam().relation);
    std::vector<std::unique_ptr<KelObject>> objects_;
    std::unique_ptr<KelObject> holder_ = makeObject(relation_.holderType);
    KelLinks<KelObject> links_{KelRelation::many(*holder_, relation_.holderEnd)};
    std::vector<KelObject*> twin_;
    int failures_ = 0;
};

TEST_P(ModelCollectionTwin, BehavesAsAVector) {
    for (int round = 0; round < 60; ++round) {
        // Rounds grow to about each size and then shrink to nothing. Some never ask: then no index is made. Some only
        // ask for names, or only add until they have grown: then nothing is sorted.
        const int sizes[] = {1, 2, KelFewLinks::mostObjects, KelFewLinks::mostObjects + 2, 90};
        const int most = sizes[round % 5];
        const bool asks = round % 3 != 0;
        const bool onlyGathers = round % 4 == 1;
        for (const bool growing : {true, false}) {
            for (int step = 0; step < 12 * most; ++step) {
                const bool adds = static_cast<int>(twin_.size()) < most && (pick(3) != 0) == growing;
                if (adds || !onlyGathers || !growing) {
                    adds ? add() : pick(2) == 0 ? remove() : pick(8) == 0 ? renameSeveral(objects_.size()) : rename();
                }
                if (asks && onlyGathers && growing) {
                    findFirst();
                } else if (asks) {
                    find();
                    look();
                }
                if (HasFatalFailure()) {
                    FAIL() << "round " << round << " step " << step;
                }
            }
            checkAll();
        }
        while (!twin_.empty()) {
            remove();
        }
        checkAll();
    }
    EXPECT_GT(failures_, 40); // arrays and indexes have grown
}

// A few are renamed while the others stay in order, and nothing asks for a place of which a tree would have to know.
TEST_P(ModelCollectionTwin, MergesAFewRenamed) {
    while (twin_.size() < 90) {
        add();
    }
    for (int round = 0; round < 300 && !HasFatalFailure(); ++round) {
        renameSeveral(round % 2 == 0 ? 8 : 40);
        if (round % 3 == 0) {
            lookInShortage();
        }
        checkAll();
    }
}

// The last one added leaves first, while names are asked for, so that nothing is ever sorted.
TEST_P(ModelCollectionTwin, FindsNamesWhileTheLastComeAndGo) {
    std::size_t held = 0;
    for (int step = 0; step < 1'000 && !HasFatalFailure(); ++step) {
        if (held < objects_.size() && pick(3) != 0) {
            KelObject* object = objects_[held++].get();
            try {
                const MemoryShortage shortage(pick(2));
                relation_.link(holder_.get(), object);
            } catch (const std::bad_alloc&) {
                ++failures_;
                findFirst();
                relation_.link(holder_.get(), object);
            }
            placeInTwin(object);
        } else if (held > 0) {
            KelObject* object = objects_[--held].get();
            ASSERT_TRUE(relation_.unlink(holder_.get(), object));
            std::erase(twin_, object);
        }
        findFirst();
    }
    checkAll();
    EXPECT_GT(failures_, 0);
}

INSTANTIATE_TEST_SUITE_P(Orders, ModelCollectionTwin,
                         testing::Values(TwinRow{KelElementType::diagram, "modelElements", false},
                                         TwinRow{KelElementType::key, "attributes", true}));

// The cost of large collections, counted in names that are read: no operation may walk.

constexpr int many = 200'000;
// A search tree of that many has 36 levels at the most, with two names at each; a renaming searches it twice.
constexpr long perOperation = 120;

long namesRead = 0;

template <class Base, KelElementType code>
class Counting final : public Base {
public:
    Counting() : Base(code) {}
    const KelString& getName() const override {
        ++namesRead;
        return Base::getName();
    }
};
using CountingPackage = Counting<KelPackage, KelElementType::package>;        // kept in the order of adding
using CountingType = Counting<KelConcreteType, KelElementType::concreteType>; // kept by name

KelString nameOf(int number) {
    return KelString(std::to_string(number % 1000).c_str());
}

/// Adds, finds, renames and removes, in an order that is bad for every collection.
template <class T, class Add, class Remove>
void useAll(const KelLinks<T>& links, Add add, Remove remove) {
    std::deque<T*> objects;
    namesRead = 0;
    for (int number = 0; number < many; ++number) {
        objects.push_back(add());
        objects.back()->setName(nameOf(number));
    }
    EXPECT_LT(namesRead, perOperation * many);

    // One after the other, all of a name.
    namesRead = 0;
    int found = 0;
    for (int index = 0; objects.front()->_getn(&links.array(), nameOf(77), &index) != nullptr; ++index) {
        ++found;
    }
    EXPECT_EQ(found, many / 1000);
    EXPECT_LT(namesRead, perOperation * (found + many)); // the index by name may be made here

    std::shuffle(objects.begin(), objects.end(), std::mt19937(1));
    namesRead = 0;
    for (int taken = 0; taken < many / 2; ++taken, objects.pop_front()) {
        T* object = objects.front();
        object->setName(nameOf(taken));
        const int index = links.indexOf(*object);
        ASSERT_EQ(links[index], object);
        int named = index;
        ASSERT_EQ(links.findNamed(object->getName(), &named), object);
        ASSERT_TRUE(remove(object));
    }
    EXPECT_LT(namesRead, 5 * perOperation * many / 2);
    EXPECT_EQ(links.count(), many - many / 2);
}

TEST(ModelCollectionCost, InTheOrderOfAdding) {
    std::deque<CountingPackage> made;
    CountingPackage owner;
    useAll(
        owner.childPackages(),
        [&] {
            owner.addChildPackage(&made.emplace_back());
            return static_cast<KelPackage*>(&made.back());
        },
        [](KelPackage* package) {
            package->removeAggregationAssembly();
            return package->getParent() == nullptr;
        });
    for (KelPackage& package : made) {
        package.removeAggregationAssembly();
    }
}

TEST(ModelCollectionCost, ByName) {
    std::deque<CountingType> made;
    KelModel owner;
    useAll(
        owner.types(),
        [&] {
            owner.addType(&made.emplace_back());
            return static_cast<KelType*>(&made.back());
        },
        [&](KelType* type) { return owner.removeType(type); });
    while (owner.removeType(0)) {
    }
}

} // namespace
