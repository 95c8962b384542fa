#pragma once

#include "host/model/KelType.h"

/// Another name for a type, which it refers to and whose properties it shows.
class KEL_API KelAliasType final : public KelType {
public:
    KelAliasType();
    ~KelAliasType() override;

    const KelString& getDataType() const override;
    int getLength() const override;
    int getScale() const override;
    const KelString& getInitialValue() const override;
    const KelString& getLowerBound() const override;
    const KelString& getUpperBound() const override;
    bool getUserDefined() const override;
    const KelString& getNativeDataType() const override;
    const KelString& getUserDataType() const override;
    const KelString& getNativeLogicalDataType() const override;
    const KelConcreteType* getActualType() const override;
    int getTypeValueCount() const override;
    bool containsTypeValue(const KelTypeValue* value) const override;
    KelTypeValue* getTypeValue(int index) const override;
    KelTypeValue* getTypeValue(const KelString& name, int* index) const override;
    void getTypeValueByPosition(KelTypeValueByPosition& values) const override;

    /// Makes this type another name for `type` in place of an earlier one. Refuses a type that this one is,
    /// directly or through other aliases, another name of.
    bool addType(KelType* type);
    [[nodiscard]] KelType* getType() const;

private:
    friend struct KelRelations;
    KelOne type_;
};
