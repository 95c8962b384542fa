#pragma once

#include "host/model/KelKey.h"

class KelForeignKey;

/// A key by which objects of a class can be told apart. A class has one primary candidate key at the most.
class KEL_API KelCandidateKey final : public KelKey {
public:
    KelCandidateKey();
    ~KelCandidateKey() override;

    /// Makes this key the class's primary key in place of an earlier one.
    bool addPrimaryOfClass(KelClass* primaryOfClass);
    [[nodiscard]] KelClass* getPrimaryOfClass() const;
    /// The foreign keys that refer to this key.
    [[nodiscard]] KelLinks<KelForeignKey> foreignKeys() const { return KelLinks<KelForeignKey>(foreignKeys_); }

private:
    friend struct KelRelations;
    KelOne primaryOfClass_;
    KelMany foreignKeys_;
};
