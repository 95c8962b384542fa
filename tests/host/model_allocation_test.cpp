// The repository while memory runs out: linking changes nothing, and taking apart needs none.

#include "ModelClasses.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/links/KelLinks.h"
#include "support/memory/MemoryShortage.h"

#include <gtest/gtest.h>

#include <new>

namespace {

class ModelAllocation : public testing::TestWithParam<std::pair<KelElementType, const char*>> {
protected:
    const KelRelation& relation_ = relationOf(GetParam().first, GetParam().second);
};

TEST_P(ModelAllocation, ALinkThatFailsLeavesBothEndsAsTheyWere) {
    int failures = 0;
    const auto holder = makeObject(relation_.holderType);
    const auto earlierHolder = makeObject(relation_.holderType); // so that the targets' ends grow, too
    const auto spare = makeObject(relation_.targetType);
    const KelLinks<KelObject> links((*holder).*relation_.holderEnd.many);
    std::vector<std::unique_ptr<KelObject>> targets;
    for (int held = 0; held < 70; ++held) {
        targets.push_back(makeObject(relation_.targetType));
        KelObject* target = targets.back().get();
        target->setName(held % 2 == 0 ? "even" : "odd");
        ASSERT_TRUE(relation_.link(earlierHolder.get(), target));
        bool linked = false;
        for (long allowed = 0; !linked; ++allowed) {
            try {
                const MemoryShortage shortage(allowed);
                linked = relation_.link(holder.get(), target);
            } catch (const std::bad_alloc&) {
                ++failures;
                ASSERT_EQ(links.count(), held);
                ASSERT_EQ(linkedTo(*target, relation_, false), std::vector{earlierHolder.get()});
                ASSERT_TRUE(relation_.link(holder.get(), spare.get())); // takes the place
                ASSERT_EQ(links.holds(*target), false);
                ASSERT_TRUE(relation_.unlink(holder.get(), spare.get()));
                ASSERT_EQ(links.indexOf(*target), -1); // makes the indexes again
                ASSERT_EQ(links.findNamed("none"), nullptr);
            }
        }
        int index = held / 2;
        ASSERT_EQ(links.holds(*target), true);
        ASSERT_EQ(links.findNamed("even", &index) != nullptr, index < held || held % 2 == 0);
    }
    EXPECT_GT(failures, 40); // arrays and indexes have grown
}

TEST_P(ModelAllocation, TakingOutNeedsNoMemory) {
    const auto holder = makeObject(relation_.holderType);
    const auto otherHolder = makeObject(relation_.holderType);
    std::vector<std::unique_ptr<KelObject>> targets;
    for (int made = 0; made < 90; ++made) {
        targets.push_back(makeObject(relation_.targetType));
        relation_.link(holder.get(), targets.back().get());
    }
    std::vector<std::unique_ptr<KelObject>> moreHolders; // a target with a large collection, too
    for (int made = 0; made < 40; ++made) {
        moreHolders.push_back(makeObject(relation_.holderType));
        relation_.link(moreHolders.back().get(), targets[45].get());
    }
    bool unlinked = true;
    bool unknown = false;
    {
        const MemoryShortage shortage(0);
        for (std::size_t index : {40U, 45U, 50U, 60U}) {
            unlinked = unlinked && relation_.unlink(holder.get(), targets[index].get());
            unknown = unknown || relation_.unlink(otherHolder.get(), targets[index].get());
        }
        targets[45]->isolate(true);
        targets[3].reset();
    }
    EXPECT_TRUE(unlinked);
    EXPECT_FALSE(unknown);
    {
        const MemoryShortage shortage(0);
        unlinked = relation_.at(*holder, true, 70) == targets[75].get();
    }
    EXPECT_TRUE(unlinked);
    EXPECT_EQ(relation_.count(*holder, true), 85);
}

INSTANTIATE_TEST_SUITE_P(Orders, ModelAllocation,
                         testing::Values(std::pair(KelElementType::diagram, "modelElements"),
                                         std::pair(KelElementType::key, "attributes")));

TEST(ModelAllocationFailure, DeletingNeedsNoMemory) {
    auto package = std::make_unique<KelDesignPackage>();
    auto* diagram = new KelClassDiagram;
    package->addDiagram(diagram);
    for (int made = 0; made < 100; ++made) {
        auto* drawn = new KelClass;
        package->addModelElement(drawn);
        diagram->addModelElement(drawn);
    }
    {
        const MemoryShortage shortage(0);
        delete package->modelElements()[50];
        delete package->modelElements()[70];
        package.reset();
    }
    EXPECT_EQ(package, nullptr);
}

} // namespace
