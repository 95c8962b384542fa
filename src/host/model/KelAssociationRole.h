#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelAssociation;
class KelClass;
class KelForeignKey;

/// One end of an association, which owns it. Refers to the class at that end, and to the foreign keys by which
/// it is reached; deleting a role deletes its foreign keys.
class KEL_API KelAssociationRole final : public KelModelObject {
public:
    KelAssociationRole();
    ~KelAssociationRole() override;

    [[nodiscard]] KelAssociation* getAssociation() const;

    /// Makes `associatedClass` the role's class in place of an earlier one.
    bool addAssociatedClass(KelClass* associatedClass);
    [[nodiscard]] KelClass* getAssociatedClass() const;

    bool addForeignKey(KelForeignKey* key);
    [[nodiscard]] KelLinks<KelForeignKey> foreignKeys() const { return KelLinks<KelForeignKey>(foreignKeys_); }

    bool isAggregate = false;
    bool isNavigable = false;
    bool isStatic = false;
    bool isFriend = false;
    bool isSource = false;        // the end that the association is read from
    std::int32_t containment = 2; // 0 by value, 1 by reference, 2 unspecified
    KelString multiplicity;

private:
    friend struct KelRelations;
    KelOne association_;
    KelOne associatedClass_;
    KelMany foreignKeys_;
};

/// Marks the first role as its association's source and the second as its target. Either may be null.
extern "C" KEL_API void setSourceProperty(KelAssociationRole* first, KelAssociationRole* second);
