// Types, what is made from them, and origins.

#include "host/bridge/KelBridgeSpecificationLiteral.h"
#include "host/bridge/generateMetadataOrigin.h"
#include "host/model/KelAliasType.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelTypeValue.h"
#include "host/model/KelTypeValueByPosition.h"
#include "host/types/buildTypePhysicalName.h"
#include "host/types/createBaseType.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>

namespace {

TEST(ModelTypes, BaseTypesByName) {
    constexpr const char* rows[][2] = {
        {"undefined", "undefined"},    {"char", "SQL_CHAR"},       {"int", "SQL_INTEGER"},    {"number", "SQL_NUMERIC"},
        {"binary", "SQL_BINARY"},      {"boolean", "SQL_BOOLEAN"}, {"date", "SQL_DATE"},      {"time", "SQL_TIME"},
        {"datetime", "SQL_TIMESTAMP"}, {"Char", "undefined"},      {"SQL_CHAR", "undefined"}, {"", "undefined"},
    };
    for (const auto& [name, dataType] : rows) {
        const std::unique_ptr<KelBaseType> made(createBaseType(name));
        EXPECT_TRUE(made->getName() == name);
        EXPECT_TRUE(made->getDataType() == dataType) << name;
        EXPECT_EQ(made->getParent(), nullptr);
    }
}

TEST(ModelTypes, LogicalNamesOfDataTypes) {
    const struct {
        const char* logicalName;
        std::initializer_list<const char*> dataTypes;
    } rows[] = {
        {"char", {"CHAR", "VARCHAR", "LONGVARCHAR", "WCHAR", "WVARCHAR", "WLONGVARCHAR"}},
        {"int", {"INTEGER", "SMALLINT", "TINYINT", "BIGINT"}},
        {"number", {"NUMERIC", "DECIMAL", "FLOAT", "REAL", "DOUBLE"}},
        {"binary", {"BINARY", "VARBINARY", "LONGVARBINARY"}},
        {"boolean", {"BOOLEAN", "BIT"}},
        {"date", {"DATE"}},
        {"time", {"TIME"}},
        {"datetime", {"TIMESTAMP"}},
        {"undefined", {"", "CLOB", "CHAR2", "char"}},
    };
    for (const auto& row : rows) {
        for (const char* dataType : row.dataTypes) {
            EXPECT_STREQ(getDefaultLogicalName(KelString("SQL_") + dataType), row.logicalName) << dataType;
        }
    }
    EXPECT_STREQ(getDefaultLogicalName("VARCHAR"), "undefined");
    EXPECT_STREQ(getDefaultLogicalName(""), "undefined");
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
    const auto shown = [&] {
        std::string all;
        for (const KelString* text :
             {&outer.getDataType(), &outer.getInitialValue(), &outer.getLowerBound(), &outer.getUpperBound(),
              &outer.getNativeDataType(), &outer.getUserDataType(), &outer.getNativeLogicalDataType()}) {
            all.append(text->view()).append(" ");
        }
        return all + std::to_string(outer.getLength()) + std::to_string(outer.getScale()) +
               std::to_string(static_cast<int>(outer.getUserDefined()));
    };
    EXPECT_EQ(shown(), "       000");
    EXPECT_EQ(outer.getActualType(), nullptr);
    ASSERT_TRUE(inner.addType(&type));
    EXPECT_EQ(shown(), "data initial lower upper native user logical 121");
    EXPECT_EQ(outer.getActualType(), &type);
}

TEST(ModelTypes, AnAliasNeverStandsForItself) {
    KelAliasType aliases[3];
    EXPECT_FALSE(aliases[0].addType(&aliases[0]));
    ASSERT_TRUE(aliases[0].addType(&aliases[1]) && aliases[1].addType(&aliases[2]));
    EXPECT_FALSE(aliases[2].addType(&aliases[0]) || aliases[1].addType(&aliases[0]));
    EXPECT_EQ(aliases[1].getType(), &aliases[2]);
}

TEST(ModelTypes, OriginsDescribeTheBridge) {
    const KelBridgeSpecificationLiteral bridge("id", "description", {"vendor", "tool", "1.0", "web", "summary"});
    const std::unique_ptr<KelMetadataOrigin> origin(generateMetadataOrigin(bridge, "run as"));
    EXPECT_TRUE(origin->vendorName == "vendor" && origin->toolName == "tool" && origin->toolVersions == "1.0");
    EXPECT_TRUE(origin->toolWeb == "web" && origin->methodologySummary == "summary" && origin->bridgeId == "run as");
    EXPECT_TRUE(origin->sourceEncoding.isEmpty() && origin->sourcePath.isEmpty() && origin->sourceKind.isEmpty());
    EXPECT_EQ(origin->getModel(), nullptr);
}

} // namespace
