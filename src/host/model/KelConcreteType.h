#pragma once

#include "host/model/KelType.h"
#include "host/model/KelTypeTexts.h"

class KelDerivedType;

/// A type that has its properties itself, unlike an alias: the base of base types and derived types. It has no values;
/// only `KelDerivedType` does.
class KEL_API KelConcreteType : public KelType {
public:
    ~KelConcreteType() override;

    const KelString& getDataType() const override { return dataType; }
    int getLength() const override { return length; }
    int getScale() const override { return scale; }
    const KelString& getInitialValue() const override { return texts.read().initialValue; }
    const KelString& getLowerBound() const override { return texts.read().lowerBound; }
    const KelString& getUpperBound() const override { return texts.read().upperBound; }
    bool getUserDefined() const override { return userDefined; }
    const KelString& getNativeDataType() const override { return texts.read().nativeDataType; }
    const KelString& getUserDataType() const override { return texts.read().userDataType; }
    const KelString& getNativeLogicalDataType() const override { return texts.read().nativeLogicalDataType; }
    const KelConcreteType* getActualType() const override { return this; }
    int getTypeValueCount() const override { return 0; }
    bool containsTypeValue(const KelTypeValue* value) const override;
    KelTypeValue* getTypeValue(int index) const override;
    KelTypeValue* getTypeValue(const KelString& name, int* index) const override;
    void getTypeValueByPosition(KelTypeValueByPosition& values) const override;

    /// The types derived from this one.
    [[nodiscard]] KelLinks<KelDerivedType> derivedTypes() const {
        return rareLinks<KelDerivedType>(KelRareEnd::derivedTypes);
    }

    KelString dataType;       // such as "SQL_INTEGER"
    std::int32_t length = 0;  // 0: none given
    std::int32_t scale = 0;   // digits after the decimal point
    bool userDefined = false; // made from a text of a model, not a base type
    KelTypeTexts texts;       // what else the getters of texts return; no import sets it

protected:
    using KelType::KelType;
};
