#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelAttribute;
class KelForeignKey;

/// Maps an attribute of a candidate key (the source) to the attribute of a foreign key that copies it (the
/// destination). The foreign key owns the map, which refers to the two attributes; deleting one of them leaves the map
/// without it.
class KEL_API KelAssociationRoleNameMap final : public KelModelObject {
public:
    KelAssociationRoleNameMap();
    ~KelAssociationRoleNameMap() override;

    /// Adds the map to the foreign key, which then owns it. Refused when another key owns it already.
    bool addForeignKey(KelForeignKey* key);
    [[nodiscard]] KelForeignKey* getForeignKey() const;
    /// Each sets the attribute of that side, replacing an earlier one.
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
