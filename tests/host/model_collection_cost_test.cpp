// What large collections cost, counted in names looked at: no operation may walk.

#include "host/model/KelConcreteType.h"
#include "host/model/KelModel.h"
#include "host/model/KelPackage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>
#include <string>

namespace {

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

/// Adds, finds, renames and takes out, in an order that no collection likes.
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
