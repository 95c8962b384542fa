#pragma once

#include "host/model/KelRelationship.h"

class KelClass;

/// A generalization: its subtype classes are special cases of its supertype classes. It refers to them; either side may
/// have several classes or none. The package that it is in owns it.
class KEL_API KelGeneralization final : public KelRelationship {
public:
    KelGeneralization();
    ~KelGeneralization() override;

    bool addSubtypeClass(KelClass* subtype);
    [[nodiscard]] KelLinks<KelClass> subtypeClasses() const { return KelLinks<KelClass>(subtypeClasses_); }
    bool addSupertypeClass(KelClass* supertype);
    [[nodiscard]] KelLinks<KelClass> supertypeClasses() const { return KelLinks<KelClass>(supertypeClasses_); }

    std::int32_t visibility = 0; // 0 public, 1 protected, 2 private
    bool isVirtual = false;      // virtual inheritance, as in C++
    bool isFriend = false;       // the supertype grants access to the subtype

private:
    friend struct KelRelations;
    KelMany subtypeClasses_;
    KelMany supertypeClasses_;
};
