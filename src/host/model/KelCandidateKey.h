#pragma once

#include "host/model/KelKey.h"

class KelForeignKey;

/// A key that identifies the objects of a class. At most one of a class's candidate keys is its primary key.
///
/// The class owns the key through `KelClass::addKey`; being its primary key is a reference only.
class KEL_API KelCandidateKey final : public KelKey {
public:
    KelCandidateKey();
    ~KelCandidateKey() override;

    /// Makes this the primary key of the class, replacing the class's earlier primary key. The key leaves the class
    /// whose primary key it was.
    bool addPrimaryOfClass(KelClass* primaryOfClass);
    [[nodiscard]] KelClass* getPrimaryOfClass() const;
    /// The foreign keys that refer to this key.
    [[nodiscard]] KelLinks<KelForeignKey> foreignKeys() const { return KelLinks<KelForeignKey>(foreignKeys_); }

private:
    friend struct KelRelations;
    KelOne primaryOfClass_;
    KelMany foreignKeys_;
};
