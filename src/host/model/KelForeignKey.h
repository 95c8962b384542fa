#pragma once

#include "host/model/KelKey.h"

class KelAssociationRole;
class KelAssociationRoleNameMap;
class KelCandidateKey;

/// A key whose attributes stand for those of a candidate key. Owns its role name maps.
class KEL_API KelForeignKey final : public KelKey {
public:
    KelForeignKey();
    ~KelForeignKey() override;

    /// Makes `key` the candidate key referred to in place of an earlier one.
    bool addCandidateKey(KelCandidateKey* key);
    [[nodiscard]] KelCandidateKey* getCandidateKey() const;
    [[nodiscard]] KelLinks<KelAssociationRoleNameMap> roleNameMaps() const {
        return KelLinks<KelAssociationRoleNameMap>(roleNameMaps_);
    }
    /// The roles it stands in.
    [[nodiscard]] KelLinks<KelAssociationRole> associationRoles() const {
        return KelLinks<KelAssociationRole>(associationRoles_);
    }

private:
    friend struct KelRelations;
    KelOne candidateKey_;
    KelMany roleNameMaps_;
    KelMany associationRoles_;
};
