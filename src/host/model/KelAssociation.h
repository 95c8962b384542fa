#pragma once

#include "host/model/KelRelationship.h"

class KelAssociationRole;

/// An association between classes. Owns its roles, which are its ends.
class KEL_API KelAssociation final : public KelRelationship {
public:
    KelAssociation();
    ~KelAssociation() override;

    bool addAssociationRole(KelAssociationRole* role);
    [[nodiscard]] KelLinks<KelAssociationRole> associationRoles() const {
        return KelLinks<KelAssociationRole>(associationRoles_);
    }

    bool isAggregation = false;

private:
    friend struct KelRelations;
    KelMany associationRoles_;
};
