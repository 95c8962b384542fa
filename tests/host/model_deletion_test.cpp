#include "ModelClasses.h"
#include "host/encoding/KelEncodingConverter.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDeletionObserver.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelModel.h"
#include "host/model/KelNote.h"
#include "host/model/KelTraversalOperation.h"
#include "support/memory/MemoryShortage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <typeindex>

namespace {

/// Objects of every class, linked at random in every relation, of which it deletes one after the other.
class Web final : public KelDeletionObserver {
public:
    explicit Web(unsigned int seed) : random_(seed) {
        for (int round = 0; round < 2; ++round) {
            for (auto& object : makeEach()) {
                const KelObject& made = *object;
                object->setName(KelString(std::to_string(round).c_str()));
                alive_.emplace(object.release(), typeid(made));
            }
        }
        for (const KelRelation* relation : KelRelations::all()) {
            for (const auto& [holder, holderClass] : alive_) {
                for (const auto& [target, targetClass] : alive_) {
                    const bool fits =
                        holder->isInstanceOf(relation->holderType) && target->isInstanceOf(relation->targetType);
                    if (fits && random_() % 3 == 0) {
                        relation->link(holder, target);
                    }
                }
            }
        }
    }

    void deleting(KelObject& object) noexcept override {
        // The dynamic class is still the object's own, and its texts are whole.
        EXPECT_EQ(std::type_index(typeid(object)), alive_.at(&object));
        EXPECT_EQ(object.getName().length(), 1);
        checkLinks(object);
        deleted_.insert(&object);
        alive_.erase(&object);
    }

    void deleteOne() {
        const auto victim = std::next(alive_.begin(), static_cast<std::ptrdiff_t>(random_() % alive_.size()));
        const std::set<KelObject*> doomed = deletedWith(victim->first);
        deleted_.clear();
        delete victim->first;
        EXPECT_EQ(deleted_, doomed);
        for (const auto& [object, objectClass] : alive_) {
            checkLinks(*object);
        }
    }

    [[nodiscard]] bool isEmpty() const { return alive_.empty(); }

private:
    /// What is deleted along with the object, itself included.
    static std::set<KelObject*> deletedWith(KelObject* object) {
        std::set<KelObject*> all;
        std::vector<KelObject*> waiting{object};
        while (!waiting.empty()) {
            object = waiting.back();
            waiting.pop_back();
            if (!all.insert(object).second) {
                continue;
            }
            for (const KelRelationEnd& end : object->getMetaClass().ends()) {
                if (end.isHolder && end.relation->hold != KelHold::refers) {
                    const auto targets = linkedTo(*object, *end.relation, true);
                    waiting.insert(waiting.end(), targets.begin(), targets.end());
                }
            }
        }
        return all;
    }

    /// Everything the object is linked to is alive, knows of it, and is known to its own owner.
    void checkLinks(const KelObject& object) const {
        for (const KelRelationEnd& end : object.getMetaClass().ends()) {
            for (const KelObject* other : linkedTo(object, *end.relation, end.isHolder)) {
                ASSERT_TRUE(alive_.contains(const_cast<KelObject*>(other))) << end.relation->name;
                const auto back = linkedTo(*other, *end.relation, !end.isHolder);
                ASSERT_EQ(std::count(back.begin(), back.end(), &object), 1) << end.relation->name;
                checkOwner(*other);
            }
        }
    }

    static void checkOwner(const KelObject& object) {
        for (const KelRelationEnd& end : object.getMetaClass().ownedEnds()) {
            if (const KelObject* owner = end.relation->at(object, false, 0); owner != nullptr) {
                ASSERT_TRUE(owner->isInstanceOf(end.relation->holderType)) << end.relation->name;
                const auto parts = linkedTo(*owner, *end.relation, true);
                ASSERT_EQ(std::count(parts.begin(), parts.end(), &object), 1) << end.relation->name;
            }
        }
    }

    std::mt19937 random_;
    std::map<KelObject*, std::type_index> alive_;
    std::set<KelObject*> deleted_;
};

TEST(ModelDeletion, NothingDanglesWhateverIsDeleted) {
    for (unsigned int seed = 0; seed < 40; ++seed) {
        Web web(seed);
        while (!web.isEmpty()) {
            web.deleteOne();
        }
        ASSERT_FALSE(HasFailure()) << "seed " << seed;
    }
}

/// The names of what is deleted, in the order in which observers hear of it.
class Deletions final : public KelDeletionObserver {
public:
    void deleting(KelObject& object) noexcept override { names += object.getName().view(); }
    std::string names;
};

template <class T>
T* named(const char* name) {
    auto* made = new T;
    made->setName(name);
    return made;
}

TEST(ModelDeletion, OwnersAreDeletedBeforeTheirPartsAndPartsInOrder) {
    auto* package = named<KelDesignPackage>("P");
    for (const char* name : {"c", "a", "b"}) {
        auto* made = named<KelClass>(name);
        made->addAttribute(named<KelAttribute>("2"));
        made->addAttribute(named<KelAttribute>("1"));
        package->addModelElement(made);
    }
    Deletions outer;
    {
        Deletions inner;
        delete package->modelElements()[1];
        EXPECT_EQ(inner.names, "a12");
    }
    delete package;
    EXPECT_EQ(outer.names, "a12Pc12b12");
}

TEST(ModelDeletion, RecursiveDeleteEmptiesAModelAndDeletesAnythingElse) {
    KelModel model;
    model.setName("host's");
    model.description = "text";
    model.addNote(new KelNote);
    model.addType(new KelDerivedType);
    auto* package = named<KelDesignPackage>("p");
    model.addChildPackage(package);
    package->addModelElement(named<KelClass>("c"));
    package->addDiagram(named<KelClassDiagram>("d"));
    Deletions deletions;
    package->modelElements()[0]->recursiveDelete();
    EXPECT_EQ(deletions.names, "c");
    model.recursiveDelete();
    EXPECT_EQ(deletions.names, "cpd");
    for (const KelRelationEnd& end : model.getMetaClass().ends()) {
        EXPECT_EQ(end.relation->count(model, end.isHolder), 0) << end.relation->name;
    }
    EXPECT_TRUE(model.getName().isEmpty() && model.description.isEmpty());
    EXPECT_TRUE(model.addType(new KelDerivedType));
}

TEST(ModelDeletion, NeedsNoMemory) {
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

TEST(ModelDeletion, DepthTakesNoStack) {
    class Counting final : public KelTraversalOperation {
    public:
        void post_process(KelObject* /*object*/, void* /*userData*/) override { ++visited; }
        int visited = 0;
    };
    constexpr int depth = 200'000;
    auto top = std::make_unique<KelDesignPackage>();
    KelPackage* inner = top.get();
    for (int level = 1; level < depth; ++level) {
        auto* child = named<KelDesignPackage>("\xE9");
        ASSERT_TRUE(inner->addChildPackage(child));
        inner = child;
    }
    Counting counting;
    top->depthTraversal(counting, nullptr);
    EXPECT_EQ(counting.visited, depth);

    KelEncodingConverter from("windows-1252");
    KelEncodingConverter to("UTF-8");
    int strings = 0;
    int errors = 0;
    top->transcode(&from, &to, strings, errors);
    EXPECT_EQ(strings, depth - 1);
    EXPECT_EQ(inner->getName(), "\xC3\xA9");

    Deletions deletions;
    top.reset();
    EXPECT_EQ(deletions.names.size(), 2U * (depth - 1));
}

} // namespace
