// Types, and what is made from them.

#include "host/model/KelAliasType.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelTypeValue.h"
#include "host/model/KelTypeValueByPosition.h"
#include "host/types/buildTypePhysicalName.h"
#include "host/types/createBaseType.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>

namespace {

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
    EXPECT_STREQ(getDefaultLogicalName("VARCHAR"), "undefined");
    EXPECT_EQ(std::unique_ptr<KelBaseType>(createBaseType("Char"))->getDataType(), "undefined");
}

TEST(ModelTypes, PhysicalNames) {
    constexpr struct {
        const char* dataType;
        int length;
        int scale;
        const char* physicalName;
    } rows[] = {
        {"SQL_CHAR", 0, 0, "CHAR"},
        {"SQL_CHAR", 12, 0, "CHAR(12)"},
        {"SQL_NUMERIC", 10, 2, "NUMERIC(10,2)"},
        {"SQL_X", 0, 2, "X(0,2)"},
        {"SQL_X", -1, 0, "X"},
        {"SQL_X", 10, -2, "X"},
        {"Money", 4, 0, "Money(4)"},
        {"", 4, 0, "(4)"},
        {"undefined", 10, 2, "its name"},
        {"mySQL_X", 0, 0, "mySQL_X"},
        {"SQL_SQL_X", 0, 0, "SQL_X"},
        {"SQL_undefined", 0, 0, "undefined"},
    };
    for (const auto& row : rows) {
        KelDerivedType type;
        type.setName("its name");
        type.dataType = row.dataType;
        type.length = row.length;
        type.scale = row.scale;
        EXPECT_STREQ(buildTypePhysicalName(&type).text(), row.physicalName);
    }
}

KelTypeValue* value(const char* name, std::int16_t position) {
    auto* made = new KelTypeValue;
    made->setName(name);
    made->position = position;
    return made;
}

std::string names(const KelTypeValueByPosition& values) {
    std::string all;
    for (int index = 0; values[index] != nullptr; ++index) {
        all += static_cast<const KelTypeValue*>(values[index])->getName().view();
    }
    return all;
}

TEST(ModelTypes, ValuesOfADerivedTypeAndOfItsOtherNames) {
    KelDerivedType type;
    KelAliasType alias;
    KelAliasType aliasOfAlias;
    const KelTypeValue foreign;
    ASSERT_TRUE(alias.addType(&type) && aliasOfAlias.addType(&alias));
    type.addTypeValue(value("c", 5));
    type.addTypeValue(value("a", -32768));
    type.addTypeValue(value("b", 5));
    type.addTypeValue(value("a", 32767));
    for (const KelType* each : {static_cast<const KelType*>(&type), static_cast<const KelType*>(&aliasOfAlias)}) {
        EXPECT_EQ(each->getTypeValueCount(), 4);
        EXPECT_TRUE(each->getTypeValue(0)->getName() == "c");
        EXPECT_EQ(each->getTypeValue(4), nullptr);
        EXPECT_TRUE(each->containsTypeValue(type.typeValues()[3]));
        EXPECT_FALSE(each->containsTypeValue(&foreign) || each->containsTypeValue(nullptr));
        int index = 9;
        EXPECT_EQ(each->getTypeValue("x", &index), nullptr);
        EXPECT_EQ(index, 9);
        EXPECT_EQ(each->getTypeValue("a", &index), type.typeValues()[1]);
        EXPECT_EQ(index, 1);
        EXPECT_EQ(each->getTypeValue("b", nullptr), type.typeValues()[2]);
        KelTypeValueByPosition values;
        values.addElement(&foreign, true);
        each->getTypeValueByPosition(values);
        EXPECT_EQ(names(values), "acba");
        const int five = 5;
        EXPECT_EQ(values.findFirst(&five, nullptr), type.typeValues()[0]);
    }
    KelTypeValueByPosition values;
    for (const std::unique_ptr<KelType>& without :
         {std::unique_ptr<KelType>(new KelBaseType), std::unique_ptr<KelType>(new KelAliasType)}) {
        values.addElement(&foreign, true);
        without->getTypeValueByPosition(values);
        EXPECT_EQ(values.getCount(), 0);
    }
}

TEST(ModelTypes, AnAliasShowsTheTypeItStandsFor) {
    KelDerivedType type;
    type.dataType = "data";
    type.length = 1;
    type.scale = 2;
    type.userDefined = true;
    type.initialValue = "initial";
    type.lowerBound = "lower";
    type.upperBound = "upper";
    type.nativeDataType = "native";
    type.userDataType = "user";
    type.nativeLogicalDataType = "logical";
    KelAliasType inner;
    KelAliasType outer;
    ASSERT_TRUE(outer.addType(&inner));
    for (const char* expected : {"//////|000", "data/initial/lower/upper/native/user/logical|121"}) {
        EXPECT_EQ(outer.getActualType(), inner.getType());
        EXPECT_EQ(outer.getDataType() + "/" + outer.getInitialValue() + "/" + outer.getLowerBound() + "/" +
                      outer.getUpperBound() + "/" + outer.getNativeDataType() + "/" + outer.getUserDataType() + "/" +
                      outer.getNativeLogicalDataType() + "|" + std::to_string(outer.getLength()).c_str() +
                      std::to_string(outer.getScale()).c_str() + (outer.getUserDefined() ? "1" : "0"),
                  expected);
        inner.addType(&type);
    }
}

TEST(ModelTypes, AnAliasNeverStandsForItself) {
    KelAliasType aliases[3];
    EXPECT_FALSE(aliases[0].addType(&aliases[0]));
    ASSERT_TRUE(aliases[0].addType(&aliases[1]) && aliases[1].addType(&aliases[2]));
    EXPECT_FALSE(aliases[2].addType(&aliases[0]) || aliases[1].addType(&aliases[0]));
    EXPECT_EQ(aliases[1].getType(), &aliases[2]);
}

} // namespace
