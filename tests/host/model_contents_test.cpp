// Copying, comparing, converting and walking objects.

#include "ModelClasses.h"
#include "host/encoding/KelEncodingConverter.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/model/KelNote.h"
#include "host/model/KelOperation.h"
#include "host/model/KelTraversalOperation.h"

#include <gtest/gtest.h>

namespace {

/// Gives a field a value that none has by itself.
struct Mark {
    void operator()(KelString& text) const { text.append("marked"); }
    void operator()(KelTypeTexts& texts) const { texts.change().userDataType.append("marked"); }
    void operator()(bool& flag) const { flag = !flag; }
    void operator()(KelClassCategoryType& category) const { category = KelClassCategoryType::metaclass; }
    void operator()(auto& number) const { number = 7; }
};

void mark(KelObject& object, const KelField& field) {
    std::visit([&](auto member) { Mark()(object.*member); }, field.member);
}

TEST(ModelContents, SetFromCopiesNameAndFieldsAndNothingElse) {
    for (const auto& source : makeEach()) {
        const auto copy = makeObject(source->elementType);
        source->setName("name");
        source->generalPointer = source.get();
        for (const KelField& field : source->getMetaClass().fields()) {
            mark(*source, field);
            EXPECT_FALSE(source->equals(*copy));
            copy->setFrom(*source);
            EXPECT_TRUE(source->equals(*copy)) << source->getMetaClass().getClassName() << "." << field.name;
        }
        copy->setFrom(*source);
        EXPECT_TRUE(copy->getName() == "name");
        EXPECT_EQ(copy->generalPointer, nullptr);
        copy->setName("other");
        EXPECT_FALSE(source->equals(*copy));
        source->setFrom(*source);
        EXPECT_TRUE(source->getName() == "name");
    }
    KelDerivedType type; // of another class it takes what both have
    type.setName("type");
    type.description = "text";
    KelAttribute attribute;
    attribute.initialValue = "1";
    attribute.setFrom(type);
    EXPECT_TRUE(attribute.getName() == "type" && attribute.description == "text" && attribute.initialValue == "1");
}

TEST(ModelContents, OnlyObjectsOfTheSameClassAreEqual) {
    const auto lefts = makeEach();
    const auto rights = makeEach();
    for (std::size_t left = 0; left < lefts.size(); ++left) {
        for (std::size_t right = 0; right < rights.size(); ++right) {
            EXPECT_EQ(*lefts[left] == *rights[right], left == right);
            EXPECT_EQ(*lefts[left] != *rights[right], left != right);
        }
    }
}

TEST(ModelContents, CopiesOfAttributesHaveNoLinks) {
    KelDerivedType type;
    KelClass owner;
    auto* attribute = new KelAttribute;
    owner.addAttribute(attribute);
    attribute->setName("a");
    attribute->toolId = 4;
    attribute->addType(&type);
    const KelAttribute copy(*attribute);
    KelAttribute assigned;
    assigned.addType(&type);
    assigned = *attribute;
    EXPECT_EQ(copy.getType(), nullptr);
    EXPECT_EQ(assigned.getType(), &type) << "its own link, which stays";
    for (const KelAttribute* each : {&copy, static_cast<const KelAttribute*>(&assigned)}) {
        EXPECT_EQ(*each, *attribute);
        EXPECT_TRUE(each->toolId == 0 && each->getParent() == nullptr);
    }
}

class Transcoded {
public:
    Transcoded(KelObject& object, const char* from, const char* to) : from_(from), to_(to) {
        object.transcode(&from_, &to_, strings, errors);
    }
    int strings = 100; // counts are added to what is there
    int errors = 100;

private:
    KelEncodingConverter from_;
    KelEncodingConverter to_;
};

TEST(ModelContents, TranscodingReachesEveryTextButTheOrigins) {
    for (const auto& object : makeEach()) {
        const bool isOrigin = object->elementType == KelElementType::metadataOrigin;
        object->setName("\xC3"); // not whole
        int texts = 1;
        for (const KelField& field : object->getMetaClass().fields()) {
            if (const auto* text = std::get_if<KelString KelObject::*>(&field.member)) {
                (*object).*(*text) = "\xC3\xA9";
                ++texts;
            } else if (const auto* typeTexts = std::get_if<KelTypeTexts KelObject::*>(&field.member)) {
                for (KelString* each : ((*object).*(*typeTexts)).change().all()) {
                    *each = "\xC3\xA9";
                    ++texts;
                }
            }
        }
        KelModel owner; // an origin is reached as a part only
        KelObject& root = isOrigin ? owner : *object;
        if (isOrigin) {
            owner.addMetadataOrigin(static_cast<KelMetadataOrigin*>(object.get()));
        }
        const Transcoded done(root, "UTF-8", "UTF-16BE");
        EXPECT_EQ(done.strings, 100 + (isOrigin ? 0 : texts)) << object->getMetaClass().getClassName();
        EXPECT_EQ(done.errors, 100 + (isOrigin ? 0 : 1)) << object->getMetaClass().getClassName();
        EXPECT_EQ(object->getName(), isOrigin ? KelString("\xC3") : KelString("\xFF\xFD", 2));
        object->removeAggregationAssembly();
    }
}

TEST(ModelContents, TranscodingKeepsNameOrderAndMissesNoName) {
    KelClass owner;
    auto* key = new KelCandidateKey;
    owner.addKey(key);
    for (int byte = 0x80; byte <= 0xFF; ++byte) {
        const char name[] = {static_cast<char>(byte), '\0'};
        auto* attribute = new KelAttribute;
        attribute->setName(name);
        owner.addAttribute(attribute);
        key->addAttribute(attribute);
    }
    const Transcoded done(owner, "windows-1252", "UTF-8");
    EXPECT_EQ(done.strings, 100 + 128);
    std::string_view before;
    for (int index = 0; index < 128; ++index) {
        const std::string_view name = owner.getAttribute(index)->getName().view();
        EXPECT_LT(before, name);
        EXPECT_EQ(key->attributes()[index], owner.getAttribute(index));
        before = name;
    }
    EXPECT_EQ(owner.getAttribute("\xC3\xBF", nullptr)->getName().length(), 2);
}

/// A small model whose objects are named by one letter each.
class ModelWalk : public testing::Test, private KelTraversalOperation {
protected:
    template <class T>
    static T* named(const char* name) {
        auto* made = new T;
        made->setName(name);
        return made;
    }

    ModelWalk() {
        package_->addDiagram(diagram_);
        package_->addModelElement(class_);
        package_->addChildPackage(named<KelDesignPackage>("c"));
        class_->addAttribute(attribute_);
        class_->addOperation(operation_);
        class_->addNote(named<KelNote>("n"));
        class_->addArgument(argument_);
        operation_->addArgument(argument_);
        operation_->addArgument(named<KelArgument>("a"));
        diagram_->addModelElement(class_);
        package_->setName("P");
    }

    std::string walk(KelObject& root, bool withRoot) {
        walked_.clear();
        int depth = 0;
        withRoot ? root.depthTraversal(*this, &depth) : root._depthTraversal(*this, &depth);
        return walked_;
    }

    std::unique_ptr<KelDesignPackage> package_ = std::make_unique<KelDesignPackage>();
    KelClassDiagram* diagram_ = named<KelClassDiagram>("D");
    KelClass* class_ = named<KelClass>("C");
    KelAttribute* attribute_ = named<KelAttribute>("A");
    KelOperation* operation_ = named<KelOperation>("O");
    KelArgument* argument_ = named<KelArgument>("s");

private:
    // The data is the depth: a pointer into this row.
    void pre_process(KelObject* object, void*& userData) override {
        static int depths[] = {0, 1, 2, 3, 4, 5};
        const int depth = *static_cast<int*>(userData);
        userData = &depths[depth + 1];
        walked_ += object->getName().text() + std::to_string(depth) + "(";
    }
    void post_process(KelObject* object, void* userData) override {
        walked_ += std::to_string(*static_cast<int*>(userData)) + object->getName().text() + ")";
    }

    std::string walked_;
};

TEST_F(ModelWalk, VisitsEachPartOnceDepthFirst) {
    EXPECT_EQ(walk(*package_, true), "P0(c1(2c)C1(n2(3n)A2(3A)O2(s3(4s)a3(4a)3O)2C)D1(2D)1P)");
    EXPECT_EQ(walk(*class_, false), "n0(1n)A0(1A)O0(s1(2s)a1(2a)1O)");
    EXPECT_EQ(walk(*attribute_, true), "A0(1A)");
    EXPECT_EQ(walk(*attribute_, false), "");
}

TEST_F(ModelWalk, ParentsAndReferences) {
    EXPECT_EQ(package_->getParent(), nullptr);
    EXPECT_EQ(argument_->getParent(), class_);
    EXPECT_EQ(argument_->getParentCount(), 2);
    EXPECT_TRUE(class_->isReferenced());
    EXPECT_FALSE(diagram_->isReferenced() || attribute_->isReferenced());
    KelDerivedType type;
    operation_->addReturnType(&type);
    EXPECT_TRUE(type.isReferenced());

    class_->isolate(false);
    EXPECT_FALSE(class_->isReferenced() || diagram_->modelElements().count() > 0);
    EXPECT_EQ(class_->getParent(), package_.get());
    EXPECT_EQ(class_->getAttributeCount(), 1);
    diagram_->addModelElement(class_);
    const std::unique_ptr<KelObject> taken(class_);
    class_->isolate(true);
    EXPECT_FALSE(class_->isReferenced() || class_->getParent() != nullptr);
    argument_->removeAggregationAssembly();
    const std::unique_ptr<KelObject> argument(argument_);
    EXPECT_EQ(argument_->getParentCount(), 0);
    EXPECT_EQ(operation_->arguments().count(), 1);
}

} // namespace
