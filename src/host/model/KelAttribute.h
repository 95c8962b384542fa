#pragma once

#include "host/model/KelFeature.h"

class KelAssociationRoleNameMap;
class KelClass;
class KelKey;

/// An attribute of a class, which owns it. A copy has the same name and fields, and none of the links.
class KEL_API KelAttribute final : public KelStructuralFeature {
public:
    KelAttribute();
    KelAttribute(const KelAttribute& other);
    KelAttribute& operator=(const KelAttribute& other);
    ~KelAttribute() override;

    [[nodiscard]] KelClass* getAssociatedClass() const;

    bool addKey(KelKey* key);
    bool removeKey(KelKey* key) noexcept;
    /// The keys it takes part in, in the order in which it joined them.
    [[nodiscard]] KelLinks<KelKey> keys() const { return KelLinks<KelKey>(keys_); }
    /// The role name maps it is the source or the destination of.
    [[nodiscard]] KelLinks<KelAssociationRoleNameMap> roleNameMapsAsSource() const {
        return KelLinks<KelAssociationRoleNameMap>(roleNameMapsAsSource_);
    }
    [[nodiscard]] KelLinks<KelAssociationRoleNameMap> roleNameMapsAsDestination() const {
        return KelLinks<KelAssociationRoleNameMap>(roleNameMapsAsDestination_);
    }

    std::int32_t visibility = 0;  // 0 public, 1 protected, 2 private, 3 implementation
    std::int32_t containment = 2; // 0 by value, 1 by reference, 2 unspecified
    bool isStatic = false;
    bool isDerived = false;
    std::int16_t position = 0; // 0-based place in the order of adding
    KelString initialValue;

private:
    friend struct KelRelations;
    KelOne class_;
    KelMany keys_;
    KelMany roleNameMapsAsSource_;
    KelMany roleNameMapsAsDestination_;
};
