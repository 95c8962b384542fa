#pragma once

#include "host/model/KelConcreteType.h"

/// A type derived from one concrete type at the most. Owns its type values, in the order of adding.
class KEL_API KelDerivedType final : public KelConcreteType {
public:
    KelDerivedType();
    ~KelDerivedType() override;

    int getTypeValueCount() const override { return typeValues_.count(); }
    bool containsTypeValue(const KelTypeValue* value) const override;
    KelTypeValue* getTypeValue(int index) const override;
    KelTypeValue* getTypeValue(const KelString& name, int* index) const override;
    void getTypeValueByPosition(KelTypeValueByPosition& values) const override;

    /// Derives the type from `type` in place of an earlier one.
    bool addDerivedFromConcreteType(KelConcreteType* type);
    [[nodiscard]] KelConcreteType* getDerivedFromConcreteType() const;

    bool addTypeValue(KelTypeValue* value);
    /// Takes the value out without deleting it; the caller then owns it.
    bool removeTypeValue(KelTypeValue* value) noexcept;
    [[nodiscard]] KelLinks<KelTypeValue> typeValues() const { return KelLinks<KelTypeValue>(typeValues_); }

private:
    friend struct KelRelations;
    KelOne derivedFrom_;
    KelMany typeValues_;
};
