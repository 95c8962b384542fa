#include "ModelClasses.h"
#include "host/model/KelModelObject.h"

#include <gtest/gtest.h>

#include <map>

namespace {

TEST(ModelClassTree, CodesNamesAndBases) {
    std::map<int, int> bases;
    EXPECT_EQ(KelMetaClass::all().size(), modelClasses().size());
    for (const ModelClass& row : modelClasses()) {
        const KelMetaClass& metaClass = KelMetaClass::of(static_cast<KelElementType>(row.code));
        EXPECT_STREQ(metaClass.getClassName(), row.name);
        bases[row.code] = row.base;
        if (row.make == nullptr) {
            continue;
        }
        const auto object = row.make();
        EXPECT_EQ(&object->getMetaClass(), &metaClass);
        std::map<int, bool> expected; // each class stands behind its base
        for (int code = row.code; !expected[code]; code = bases.at(code)) {
            expected[code] = true;
        }
        for (int code = -1; code < 150; ++code) {
            EXPECT_EQ(object->isInstanceOf(static_cast<KelElementType>(code)), expected[code]) << row.name << code;
        }
    }
}

// What a new object's field holds where it is not 0, false or empty.
const std::map<std::pair<int, std::string>, int> presetFields = {
    {{13, "categoryType"}, 1}, {{14, "containment"}, 2}, {{18, "containment"}, 2}};

struct AsNumber {
    int operator()(const KelString& text) const { return text.length(); }
    int operator()(auto value) const { return static_cast<int>(value); }
};

TEST(ModelClassTree, NewObjectsAreBlank) {
    for (const auto& object : makeEach()) {
        const KelMetaClass& metaClass = object->getMetaClass();
        EXPECT_TRUE(object->getName().isEmpty());
        EXPECT_EQ(object->generalPointer, nullptr);
        if (object->isInstanceOf(KelElementType::modelObject)) {
            EXPECT_EQ(static_cast<KelModelObject&>(*object).toolId, 0);
        }
        for (const KelField& field : metaClass.fields()) {
            const int value = std::visit([&](auto member) { return AsNumber()((*object).*member); }, field.member);
            const auto preset = presetFields.find({static_cast<int>(metaClass.getCode()), field.name});
            EXPECT_EQ(value, preset != presetFields.end() ? preset->second : 0)
                << metaClass.getClassName() << "." << field.name;
        }
        for (const KelRelationEnd& end : metaClass.ends()) {
            EXPECT_EQ(end.relation->count(*object, end.isHolder), 0);
        }
    }
}

TEST(ModelClassTree, OnlyObjectsOfTheVerySameClassAreEqual) {
    const auto lefts = makeEach();
    const auto rights = makeEach();
    for (std::size_t left = 0; left < lefts.size(); ++left) {
        for (std::size_t right = 0; right < rights.size(); ++right) {
            EXPECT_EQ(*lefts[left] == *rights[right], left == right);
            EXPECT_EQ(*lefts[left] != *rights[right], left != right);
        }
    }
}

} // namespace
