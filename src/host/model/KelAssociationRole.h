#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelAssociation;
class KelClass;
class KelForeignKey;

/// One end of an association, which owns it. Refers to the class at that end and to the foreign keys that implement it.
///
/// Deleting a role deletes its foreign keys, although their class owns them and other roles may refer to them.
class KEL_API KelAssociationRole final : public KelModelObject {
public:
    KelAssociationRole();
    ~KelAssociationRole() override;

    [[nodiscard]] KelAssociation* getAssociation() const;

    /// Sets the class at this end, replacing an earlier one.
    bool addAssociatedClass(KelClass* associatedClass);
    [[nodiscard]] KelClass* getAssociatedClass() const;

    /// Refers to a foreign key; several roles may share one.
    bool addForeignKey(KelForeignKey* key);
    [[nodiscard]] KelLinks<KelForeignKey> foreignKeys() const { return KelLinks<KelForeignKey>(foreignKeys_); }

    bool isAggregate = false; // the class at this end is the whole
    bool isNavigable = false; // the association can be followed towards this end
    bool isStatic = false;
    bool isFriend = false;
    bool isSource = false;        // the association is read from this end
    std::int32_t containment = 2; // 0 by value, 1 by reference, 2 unspecified
    KelString multiplicity;       // such as "0..*" or "1"; a text of the file for any other

private:
    friend struct KelRelations;
    KelOne association_;
    KelOne associatedClass_;
    KelMany foreignKeys_;
};

/// Sets `isSource` of the first role to true and of the second to false. Either may be null.
extern "C" KEL_API void setSourceProperty(KelAssociationRole* first, KelAssociationRole* second);
