#pragma once

#include "host/model/KelRelationship.h"

class KelAssociationRole;

/// An association between classes. Owns its roles, which are its ends; a valid one has two or more, each with a class.
/// The repository accepts any number: an import removes invalid associations itself.
class KEL_API KelAssociation final : public KelRelationship {
public:
    KelAssociation();
    ~KelAssociation() override;

    bool addAssociationRole(KelAssociationRole* role);
    [[nodiscard]] KelLinks<KelAssociationRole> associationRoles() const {
        return KelLinks<KelAssociationRole>(associationRoles_);
    }

    bool isAggregation = false; // one of the roles is the aggregate

private:
    friend struct KelRelations;
    KelMany associationRoles_;
};
