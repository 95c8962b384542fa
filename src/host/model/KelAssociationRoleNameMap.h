#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelAttribute;
class KelForeignKey;

/// Says which attribute of a foreign key stands for which attribute of the candidate key. The foreign key owns
/// it.
class KEL_API KelAssociationRoleNameMap final : public KelModelObject {
public:
    KelAssociationRoleNameMap();
    ~KelAssociationRoleNameMap() override;

    /// Hands the map to its foreign key.
    bool addForeignKey(KelForeignKey* key);
    [[nodiscard]] KelForeignKey* getForeignKey() const;
    bool addSourceAttribute(KelAttribute* attribute);
    [[nodiscard]] KelAttribute* getSourceAttribute() const;
    bool addDestinationAttribute(KelAttribute* attribute);
    [[nodiscard]] KelAttribute* getDestinationAttribute() const;

private:
    friend struct KelRelations;
    KelOne foreignKey_;
    KelOne sourceAttribute_;
    KelOne destinationAttribute_;
};
