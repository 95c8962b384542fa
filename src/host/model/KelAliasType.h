#pragma once

#include "host/model/KelType.h"

/// Another name for a type. It refers to that type and shows the properties of the concrete type at the end of the
/// chain of aliases; an alias of nothing shows empty texts, 0 and no values. Each access walks the chain.
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

    /// Makes this an alias of `type`, replacing an earlier link. Refuses this type itself and any alias of it, so that
    /// no circle arises.
    bool addType(KelType* type);
    /// The type next in the chain, which may be an alias too.
    [[nodiscard]] KelType* getType() const;

private:
    friend struct KelRelations;
    KelOne type_;
};
