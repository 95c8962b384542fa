#pragma once

#include "host/model/KelType.h"

class KelDerivedType;

/// A type that has its properties itself, unlike an alias: the base of base types and derived types. It has no values;
/// only `KelDerivedType` does.
class KEL_API KelConcreteType : public KelType {
public:
    ~KelConcreteType() override;

    const KelString& getDataType() const override { return dataType; }
    int getLength() const override { return length; }
    int getScale() const override { return scale; }
    const KelString& getInitialValue() const override { return initialValue; }
    const KelString& getLowerBound() const override { return lowerBound; }
    const KelString& getUpperBound() const override { return upperBound; }
    bool getUserDefined() const override { return userDefined; }
    const KelString& getNativeDataType() const override { return nativeDataType; }
    const KelString& getUserDataType() const override { return userDataType; }
    const KelString& getNativeLogicalDataType() const override { return nativeLogicalDataType; }
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
    // No import sets the following.
    KelString initialValue;
    KelString lowerBound;
    KelString upperBound;
    KelString nativeDataType;
    KelString userDataType;
    KelString nativeLogicalDataType;

protected:
    using KelType::KelType;
};
