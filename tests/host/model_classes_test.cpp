// The classes of the repository, the relations between them, and the types that are made by name.

#include "ModelClasses.h"
#include "host/model/KelAliasType.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelModelObject.h"
#include "host/model/KelTypeValue.h"
#include "host/model/KelTypeValueByPosition.h"
#include "host/types/buildTypePhysicalName.h"
#include "host/types/createBaseType.h"

#include <gtest/gtest.h>

#include <map>
#include <ostream>

void PrintTo(const KelRelation* relation, std::ostream* out) {
    *out << static_cast<int>(relation->holderType) << " " << relation->name;
}

namespace {

// Codes are part of the interface.
TEST(ModelClasses, CodesNamesAndBases) {
    std::string text;
    for (const KelMetaClass& metaClass : KelMetaClass::all()) {
        const KelMetaClass* base = metaClass.getBase();
        text += metaClass.getClassName() + (":" + std::to_string(static_cast<int>(metaClass.getCode())));
        text += base != nullptr ? "<" + std::to_string(static_cast<int>(base->getCode())) + " " : " ";
    }
    EXPECT_EQ(text,
              "KelObject:33 KelNote:1<33 KelElement:0<33 KelMetadataOrigin:98<0 KelMappingObject:60<0 "
              "KelClassifierMap:76<60 KelTransformation:79<60 KelModelObject:59<0 KelPackage:144<59 KelModel:2<144 "
              "KelDesignPackage:9<144 KelDiagram:10<59 KelClassDiagram:11<10 KelModelElement:12<59 "
              "KelClassifier:75<12 KelClass:13<75 KelJoin:92<75 KelRelationship:15<12 KelAssociation:17<15 "
              "KelGeneralization:16<15 KelDependency:40<15 KelRealization:41<15 KelFeature:77<59 "
              "KelStructuralFeature:99<77 KelAttribute:14<99 KelOperation:23<59 KelArgument:24<59 "
              "KelAssociationRole:18<59 KelAssociationRoleNameMap:19<59 KelJoinRole:93<59 KelKey:20<59 "
              "KelCandidateKey:21<20 KelForeignKey:22<20 KelType:3<59 KelConcreteType:50<3 KelBaseType:4<50 "
              "KelDerivedType:5<50 KelAliasType:6<3 KelTypeValue:7<59 ");
    for (const auto& object : makeEach()) {
        for (const KelMetaClass& other : KelMetaClass::all()) {
            const KelMetaClass* base = &object->getMetaClass();
            while (base != nullptr && base != &other) {
                base = base->getBase();
            }
            EXPECT_EQ(object->isInstanceOf(other.getCode()), base != nullptr) << other.getClassName();
        }
        EXPECT_FALSE(object->isInstanceOf(static_cast<KelElementType>(149)));
    }
}

/// The fields of a new object that are not 0, false or empty.
const std::map<std::pair<int, std::string>, int> presetFields = {
    {{13, "categoryType"}, 1}, {{14, "containment"}, 2}, {{18, "containment"}, 2}};

struct AsNumber {
    int operator()(const KelString& text) const { return text.length(); }
    int operator()(const KelTypeTexts& texts) const { return static_cast<int>(texts != KelTypeTexts()); }
    int operator()(auto value) const { return static_cast<int>(value); }
};

TEST(ModelClasses, NewObjectsAreBlank) {
    for (const auto& object : makeEach()) {
        const KelMetaClass& metaClass = object->getMetaClass();
        EXPECT_TRUE(object->getName().isEmpty() && object->generalPointer == nullptr);
        if (object->isInstanceOf(KelElementType::modelObject)) {
            EXPECT_EQ(static_cast<KelModelObject&>(*object).toolId, 0);
        }
        for (const KelField& field : metaClass.fields()) {
            const int value = std::visit([&](auto member) { return AsNumber()((*object).*member); }, field.member);
            const auto preset = presetFields.find({static_cast<int>(metaClass.getCode()), field.name});
            EXPECT_EQ(value, preset != presetFields.end() ? preset->second : 0)
                << metaClass.getClassName() << "." << field.name;
        }
    }
}

using Objects = std::vector<KelObject*>;

int allLinks(const KelObject& object) {
    int links = 0;
    for (const KelRelationEnd& end : object.getMetaClass().ends()) {
        links += end.relation->count(object, end.isHolder);
    }
    return links;
}

/// Objects for both ends of a relation. The targets are deleted first and leave their owners.
class ModelRelation : public testing::TestWithParam<const KelRelation*> {
protected:
    ModelRelation() { second_->setName("another"); }

    [[nodiscard]] Objects targets(const KelObject& holder) const { return linkedTo(holder, relation_, true); }
    [[nodiscard]] Objects holders(const KelObject& target) const { return linkedTo(target, relation_, false); }

    const KelRelation& relation_ = *GetParam();
    const bool owns_ = relation_.hold == KelHold::owns;
    std::unique_ptr<KelObject> holder_ = makeObject(relation_.holderType);
    std::unique_ptr<KelObject> secondHolder_ = makeObject(relation_.holderType);
    std::unique_ptr<KelObject> target_ = makeObject(relation_.targetType);
    std::unique_ptr<KelObject> second_ = makeObject(relation_.targetType);
};

TEST_P(ModelRelation, LinksBothEndsOfEveryClassAndNothingElse) {
    for (const auto& holder : makeEach(relation_.holderType)) {
        for (const auto& target : makeEach(relation_.targetType)) {
            EXPECT_FALSE(relation_.link(holder.get(), nullptr) || relation_.link(nullptr, target.get()));
            ASSERT_TRUE(relation_.link(holder.get(), target.get()));
            EXPECT_FALSE(relation_.link(holder.get(), target.get()));
            EXPECT_TRUE(relation_.set(holder.get(), target.get()));
            EXPECT_EQ(targets(*holder), Objects{target.get()});
            EXPECT_EQ(holders(*target), Objects{holder.get()});
            EXPECT_EQ(allLinks(*holder) + allLinks(*target), 2);
            EXPECT_EQ(target->getParent(), owns_ ? holder.get() : nullptr);
            EXPECT_TRUE(relation_.unlink(holder.get(), target.get()));
            EXPECT_FALSE(relation_.unlink(holder.get(), target.get()));
            EXPECT_EQ(allLinks(*holder) + allLinks(*target), 0);
        }
    }
}

TEST_P(ModelRelation, TheFirstOwnerKeepsAndALaterReferenceReplaces) {
    const bool heldByMany = !relation_.targetEnd.isOne();
    ASSERT_TRUE(relation_.link(holder_.get(), target_.get()));
    EXPECT_EQ(relation_.link(secondHolder_.get(), target_.get()), !owns_);
    EXPECT_EQ(holders(*target_), owns_        ? Objects{holder_.get()}
                                 : heldByMany ? (Objects{holder_.get(), secondHolder_.get()})
                                              : Objects{secondHolder_.get()});
    EXPECT_EQ(targets(*holder_), owns_ || heldByMany ? Objects{target_.get()} : Objects{});
    EXPECT_TRUE(relation_.link(secondHolder_.get(), second_.get()));
    EXPECT_EQ(targets(*secondHolder_), !owns_ && !relation_.holderEnd.isOne() ? (Objects{target_.get(), second_.get()})
                                                                              : Objects{second_.get()});
    relation_.clear(*target_, false);
    relation_.clear(*second_, false);
    EXPECT_EQ(allLinks(*holder_) + allLinks(*secondHolder_), 0);
}

INSTANTIATE_TEST_SUITE_P(All, ModelRelation, testing::ValuesIn(KelRelations::all().begin(), KelRelations::all().end()));

TEST(ModelRelations, NothingIsInsideItselfOrStandsForItself) {
    KelDesignPackage packages[4];
    KelAliasType aliases[4];
    for (int index = 0; index < 3; ++index) {
        ASSERT_TRUE(packages[2 - index].addChildPackage(&packages[3 - index]));
        ASSERT_TRUE(aliases[2 - index].addType(&aliases[3 - index]));
    }
    for (int index = 0; index < 4; ++index) {
        EXPECT_FALSE(packages[index].addChildPackage(&packages[0]) || aliases[index].addType(&aliases[0]));
    }
    EXPECT_EQ(packages[0].getParentPackage(), nullptr);
    EXPECT_EQ(aliases[3].getType(), nullptr);
    for (KelDesignPackage& each : packages) { // they are not on the heap
        each.removeAggregationAssembly();
    }
}

TEST(ModelTypes, LogicalNamesStandForDataTypes) {
    const struct {
        const char* logicalName;
        const char* dataType; // of the base type of that name
        std::initializer_list<const char*> dataTypes;
    } rows[] = {
        {"char", "SQL_CHAR", {"CHAR", "VARCHAR", "LONGVARCHAR", "WCHAR", "WVARCHAR", "WLONGVARCHAR"}},
        {"int", "SQL_INTEGER", {"INTEGER", "SMALLINT", "TINYINT", "BIGINT"}},
        {"number", "SQL_NUMERIC", {"NUMERIC", "DECIMAL", "FLOAT", "REAL", "DOUBLE"}},
        {"binary", "SQL_BINARY", {"BINARY", "VARBINARY", "LONGVARBINARY"}},
        {"boolean", "SQL_BOOLEAN", {"BOOLEAN", "BIT"}},
        {"date", "SQL_DATE", {"DATE"}},
        {"time", "SQL_TIME", {"TIME"}},
        {"datetime", "SQL_TIMESTAMP", {"TIMESTAMP"}},
        {"undefined", "undefined", {"", "CLOB", "CHAR2", "char"}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(std::unique_ptr<KelBaseType>(createBaseType(row.logicalName))->getDataType(), row.dataType);
        for (const char* dataType : row.dataTypes) {
            EXPECT_STREQ(getDefaultLogicalName(KelString("SQL_") + dataType), row.logicalName) << dataType;
        }
    }
}

TEST(ModelTypes, PhysicalNames) {
    constexpr struct {
        const char* dataType;
        int length;
        int scale;
        const char* physicalName;
    } rows[] = {{"SQL_CHAR", 0, 0, "CHAR"},
                {"SQL_NUMERIC", 10, 2, "NUMERIC(10,2)"},
                {"SQL_X", 0, 2, "X(0,2)"},
                {"SQL_X", -1, 0, "X"},
                {"SQL_X", 10, -2, "X"},
                {"Money", 4, 0, "Money(4)"},
                {"", 4, 0, "(4)"},
                {"undefined", 10, 2, "its name"},
                {"mySQL_X", 0, 0, "mySQL_X"},
                {"SQL_SQL_X", 0, 0, "SQL_X"}};
    for (const auto& row : rows) {
        KelDerivedType type;
        type.setName("its name");
        type.dataType = row.dataType;
        type.length = row.length;
        type.scale = row.scale;
        EXPECT_STREQ(buildTypePhysicalName(&type).text(), row.physicalName);
    }
}

TEST(ModelTypes, LinksTakenFromAnEmptyTypeShowWhatComesLater) {
    KelDerivedType type;
    const KelLinks<KelTypeValue> values = type.typeValues();
    EXPECT_TRUE(values.isEmpty());
    auto* value = new KelTypeValue;
    type.addTypeValue(value);
    EXPECT_EQ(values.first(), value);
    delete value;
    EXPECT_TRUE(values.isEmpty());
}

TEST(ModelTypes, AnAliasShowsTheTypeAndTheValuesOfItsType) {
    KelDerivedType type;
    type.dataType = "data";
    type.length = 1;
    type.scale = 2;
    type.userDefined = true;
    type.texts.change().initialValue = "initial";
    type.texts.change().lowerBound = "lower";
    type.texts.change().upperBound = "upper";
    type.texts.change().nativeDataType = "native";
    type.texts.change().userDataType = "user";
    type.texts.change().nativeLogicalDataType = "logical";
    std::int16_t position = 5;
    for (const char* name : {"c", "a", "b"}) {
        auto* value = new KelTypeValue;
        value->setName(name);
        value->position = position--;
        type.addTypeValue(value);
    }
    KelAliasType inner;
    KelAliasType outer;
    ASSERT_TRUE(outer.addType(&inner));
    EXPECT_EQ(outer.getDataType(), "");
    inner.addType(&type);
    KelTypeValueByPosition values;
    outer.getTypeValueByPosition(values);
    KelString text = outer.getDataType() + outer.getInitialValue() + outer.getLowerBound() + outer.getUpperBound() +
                     outer.getNativeDataType() + outer.getUserDataType() + outer.getNativeLogicalDataType();
    for (int index = 0; index < outer.getTypeValueCount(); ++index) {
        EXPECT_TRUE(outer.containsTypeValue(outer.getTypeValue(index)));
        text += static_cast<const KelTypeValue*>(values[index])->getName();
    }
    EXPECT_EQ(text, "datainitialloweruppernativeuserlogicalbac");
    const int four = 4;
    EXPECT_EQ(values.findFirst(&four, nullptr), type.typeValues()[1]);
    KelBaseType().getTypeValueByPosition(values);
    EXPECT_EQ(values.getCount(), 0);
    EXPECT_EQ(outer.getActualType(), &type);
    EXPECT_EQ(outer.getTypeValue("a", nullptr), type.typeValues()[1]);
    EXPECT_TRUE(outer.getLength() == 1 && outer.getScale() == 2 && outer.getUserDefined());
}

} // namespace
