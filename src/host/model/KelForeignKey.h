#pragma once

#include "host/model/KelKey.h"

class KelAssociationRole;
class KelAssociationRoleNameMap;
class KelCandidateKey;

/// A key whose attributes copy those of a candidate key, usually of another class. Its class owns it.
///
/// Owns its role name maps, which map attribute to attribute; refers to the candidate key. It is deleted with its class
/// and with any association role that refers to it.
class KEL_API KelForeignKey final : public KelKey {
public:
    KelForeignKey();
    ~KelForeignKey() override;

    /// Sets the candidate key, replacing an earlier one.
    bool addCandidateKey(KelCandidateKey* key);
    [[nodiscard]] KelCandidateKey* getCandidateKey() const;
    /// `KelAssociationRoleNameMap::addForeignKey` adds to them.
    [[nodiscard]] KelLinks<KelAssociationRoleNameMap> roleNameMaps() const {
        return KelLinks<KelAssociationRoleNameMap>(roleNameMaps_);
    }
    /// The roles that refer to it.
    [[nodiscard]] KelLinks<KelAssociationRole> associationRoles() const {
        return KelLinks<KelAssociationRole>(associationRoles_);
    }

private:
    friend struct KelRelations;
    KelOne candidateKey_;
    KelMany roleNameMaps_;
    KelMany associationRoles_;
};
