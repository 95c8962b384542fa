#pragma once

#include "host/model/KelFeature.h"

class KelAssociationRoleNameMap;
class KelClass;
class KelKey;

/// An attribute of a class, which owns it. Refers to its type (`KelFeature`) and is part of any number of keys.
///
/// A copy has the same name and fields and no links, thus neither class nor type; assigning keeps the links of the
/// target.
class KEL_API KelAttribute final : public KelStructuralFeature {
public:
    KelAttribute();
    KelAttribute(const KelAttribute& other);
    KelAttribute& operator=(const KelAttribute& other);
    ~KelAttribute() override;

    [[nodiscard]] KelClass* getAssociatedClass() const;

    /// Adds the attribute to a key, or takes it out: as `KelKey::addAttribute` and `removeAttribute`.
    bool addKey(KelKey* key);
    bool removeKey(KelKey* key) noexcept;
    /// The keys that contain it, in the order in which it was added to them.
    [[nodiscard]] KelLinks<KelKey> keys() const { return rareLinks<KelKey>(KelRareEnd::keys); }
    /// The role name maps whose source, or destination, it is.
    [[nodiscard]] KelLinks<KelAssociationRoleNameMap> roleNameMapsAsSource() const {
        return rareLinks<KelAssociationRoleNameMap>(KelRareEnd::mapsAsSource);
    }
    [[nodiscard]] KelLinks<KelAssociationRoleNameMap> roleNameMapsAsDestination() const {
        return rareLinks<KelAssociationRoleNameMap>(KelRareEnd::mapsAsDestination);
    }

    std::int32_t visibility = 0;  // 0 public, 1 protected, 2 private, 3 implementation
    std::int32_t containment = 2; // 0 by value, 1 by reference, 2 unspecified
    bool isStatic = false;        // one value for all objects of the class
    bool isDerived = false;       // computed from other values
    std::int16_t position = 0;    // index in the order of adding, from 0; the class itself is in name order
    KelString initialValue;

private:
    friend struct KelRelations;
    KelOne class_;
};
