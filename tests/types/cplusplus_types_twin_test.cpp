// The C++ conversion of random types, held against a conversion that looks for its results by walking.

#include "host/model/KelAttribute.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelClass.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelModel.h"
#include "types/CPlusPlusTypes.h"
#include "types/setRoseTypes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <vector>

namespace {

using namespace rose;

/// The names of a model's types are all different.
std::array texts{"int",   "int[3]",  "boolean", "boolean[2]", "SQL_BOOLEAN", "void",  "voidX",    "binary",
                 "char*", "char[4]", "char",    "Customer",   "number",      "float", "undefined"};

/// The first type that the converters made with these values, in the order of the collection. What they are given,
/// and the base types, are no answers.
KelDerivedType* walk(const KelModel& conversion, const KelString& dataType, const KelString& name, int length) {
    for (KelType* type : conversion.types()) {
        if (type->elementType == KelElementType::derivedType && type->getDataType() == dataType &&
            type->getName() == name && type->getLength() == length) {
            return static_cast<KelDerivedType*>(type);
        }
    }
    return nullptr;
}

KelBaseType* addBase(KelModel& conversion, const char* name, const char* dataType) {
    auto* base = new KelBaseType();
    base->setName(name);
    base->dataType = dataType;
    conversion.addType(base);
    return base;
}

/// One declared type with up to three attributes of one class, some of them held by reference.
std::unique_ptr<KelDerivedType> declare(std::mt19937& random, const char* text, KelClass& owner,
                                        std::vector<KelAttribute*>& attributes) {
    auto declared = std::make_unique<KelDerivedType>();
    declared->setName(text);
    for (unsigned int left = random() % 4; left > 0; --left) {
        auto* attribute = new KelAttribute();
        attribute->setName(std::to_string(random()).c_str());
        attribute->containment = static_cast<int>(random() % 3);
        owner.addAttribute(attribute);
        declared->addFeature(attribute);
        attributes.push_back(attribute);
    }
    return declared;
}

TEST(ConvertedTypesTwin, ResultsAreThoseThatAWalkFinds) {
    std::mt19937 random(7);
    for (int round = 0; round < 80; ++round) {
        std::shuffle(texts.begin(), texts.end(), random);
        KelClass owner;
        KelModel conversion;
        const ConvertedTypes::Scope results;
        undefined = addBase(conversion, "undefined", "undefined");
        charBase = addBase(conversion, "char", "SQL_CHAR");
        intBase = addBase(conversion, "int", "SQL_INTEGER");
        numberBase = addBase(conversion, "number", "SQL_NUMERIC");
        binBase = addBase(conversion, "binary", "SQL_BINARY");
        for (const char* text : texts) {
            std::vector<KelAttribute*> attributes;
            const std::unique_ptr<KelDerivedType> declared = declare(random, text, owner, attributes);
            const CPlusPlusSpelling read = readSpelling(declared->getName());
            SCOPED_TRACE(read.text.text());
            const bool mayReuse = read.text.view().starts_with(read.logicalName.view());
            const KelType* expected = mayReuse ? walk(conversion, read.sqlType, read.text, read.length) : nullptr;
            const KelType* shared = walk(conversion, "SQL_BINARY", read.logicalName, read.length);
            const int before = conversion.types().count();

            const KelType* result = convertCPLUSPLUStype(&conversion, declared.get());
            EXPECT_TRUE(expected == nullptr || result == expected);
            EXPECT_EQ(result->getName(), read.text);
            int made = static_cast<int>(expected == nullptr);
            for (const KelAttribute* attribute : attributes) {
                if (attribute->containment != 1 || read.sqlType == "SQL_BINARY") {
                    EXPECT_EQ(attribute->getType(), result);
                } else if (shared != nullptr) {
                    EXPECT_EQ(attribute->getType(), shared);
                } else {
                    EXPECT_EQ(attribute->getType()->getName(), read.logicalName);
                    EXPECT_EQ(attribute->getType()->getLength(), 0);
                    shared = walk(conversion, "SQL_BINARY", read.logicalName, read.length);
                    ++made;
                }
            }
            EXPECT_EQ(conversion.types().count(), before + made);
            EXPECT_EQ(declared->features().count(), 0);
        }
    }
}

} // namespace
