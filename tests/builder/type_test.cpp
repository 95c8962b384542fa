#include "builder/Arguments.h"
#include "builder/Attributes.h"
#include "builder/BuilderSession.h"
#include "builder/Classes.h"
#include "builder/Operations.h"
#include "builder/Types.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelOperation.h"

namespace rose {

namespace {

class TypeSession : public BuilderSession {
protected:
    void SetUp() override {
        call(CreateClass, "A", KelClassCategoryType::classObject);
        call(CreateAttribute, "x");
    }

    [[nodiscard]] std::string typeNames() const {
        std::string names;
        for (const KelType* type : model.types()) {
            names += std::string(type->getName().view()) + "|";
        }
        return names;
    }
};

TEST_F(TypeSession, OneTypeStandsForEverySpellingOfItsName) {
    struct Row {
        const char* text;
        const char* type; // of the attribute then
        const char* all;  // that the model has then
    };
    constexpr Row rows[] = {
        {"Integer", "Integer", "Integer|"},
        {"Integer", "Integer", "Integer|"},
        {"Logical View::Money", "Money", "Integer|Money|"},
        {"Logical View::Sales::Money", "Money", "Integer|Money|"},
        {"Money", "Money", "Integer|Money|"},
        {"Sales::Money", "Sales::Money", "Integer|Money|Sales::Money|"},
        {"Integer ", "Integer ", "Integer|Integer |Money|Sales::Money|"},
        {"Logical View::", "", "|Integer|Integer |Money|Sales::Money|"},
        {"", "", "|Integer|Integer |Money|Sales::Money|"},
    };
    for (const Row& row : rows) {
        call(ConnectType, row.text);
        ASSERT_NE(aAttribute->getType(), nullptr);
        EXPECT_EQ(aAttribute->getType(), aBaseType);
        EXPECT_EQ(aBaseType->getName(), row.type) << row.text;
        EXPECT_TRUE(static_cast<const KelDerivedType*>(aBaseType)->userDefined);
        EXPECT_EQ(typeNames(), row.all) << row.text;
        EXPECT_EQ(log.lines.back(), std::string("QEV_RRSE_D0018 Connecting Type ") + row.text + "...");
    }
    const std::size_t logged = log.lines.size();
    ConnectType(nullptr);
    EXPECT_EQ(log.lines.size(), logged);
}

TEST_F(TypeSession, OnlyAttributesAndArgumentsAreTyped) {
    call(CreateArgument, "y"); // belongs to nothing, and can be typed all the same
    call(CreateOperation, "f");
    struct Row {
        KelModelObject* active;
        const char* ofAttribute;
        const char* ofArgument;
    };
    const Row rows[] = {
        {aOperation, "", ""}, {nullptr, "", ""}, {aClass, "", ""}, {aArgument, "", "2"}, {aAttribute, "1", "2"},
    };
    const auto nameOf = [](const KelType* type) { return type != nullptr ? type->getName() : KelString(); };
    for (const Row& row : rows) {
        activeObject = row.active;
        call(ConnectType, row.active == aAttribute ? "1" : "2");
        EXPECT_EQ(nameOf(aAttribute->getType()), row.ofAttribute);
        EXPECT_EQ(nameOf(aArgument->getType()), row.ofArgument);
    }
    EXPECT_EQ(typeNames(), "1|2|") << "a type that nothing received stays in the model";
}

TEST_F(TypeSession, TheCopyOfAQualifierIsTypedWithIt) {
    KelAttribute* const copy = aAttribute;
    call(CreateAttribute, "original");
    shadowAttribute = copy;
    call(ConnectType, "T");
    EXPECT_EQ(copy->getType(), aBaseType);
    EXPECT_EQ(aAttribute->getType(), aBaseType);
}

TEST_F(TypeSession, AReturnTypeIsNamedAsItIsWritten) {
    const std::size_t logged = log.lines.size();
    call(ConnectReturnType, "char");
    EXPECT_EQ(typeNames(), "") << "there is no operation";
    call(CreateOperation, "f");
    for (const char* text : {"Logical View::Money", "Money", "Logical View::Money"}) {
        call(ConnectReturnType, text);
        EXPECT_EQ(aOperation->getReturnType(), aBaseType);
        EXPECT_EQ(aBaseType->getName(), text);
    }
    EXPECT_EQ(typeNames(), "Logical View::Money|Money|");
    EXPECT_EQ(log.lines.size(), logged);
}

} // namespace

} // namespace rose
