#pragma once

#include "host/model/KelConcreteType.h"

/// A type derived from at most one concrete type, for example with a length, or an enumerated type. Owns its type
/// values and refers to the type that it is derived from.
class KEL_API KelDerivedType final : public KelConcreteType {
public:
    KelDerivedType();
    ~KelDerivedType() override;

    int getTypeValueCount() const override { return typeValues().count(); }
    bool containsTypeValue(const KelTypeValue* value) const override;
    KelTypeValue* getTypeValue(int index) const override;
    KelTypeValue* getTypeValue(const KelString& name, int* index) const override;
    void getTypeValueByPosition(KelTypeValueByPosition& values) const override;

    /// Sets the type that this one is derived from, replacing an earlier one. Circles are not checked.
    bool addDerivedFromConcreteType(KelConcreteType* type);
    [[nodiscard]] KelConcreteType* getDerivedFromConcreteType() const;

    bool addTypeValue(KelTypeValue* value);
    bool removeTypeValue(KelTypeValue* value) noexcept;
    [[nodiscard]] KelLinks<KelTypeValue> typeValues() const { return rareLinks<KelTypeValue>(KelRareEnd::typeValues); }

private:
    friend struct KelRelations;
    KelOne derivedFrom_;
};
