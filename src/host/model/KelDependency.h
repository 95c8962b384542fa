#pragma once

#include "host/model/KelRelationship.h"

class KelClass;

/// A dependency: a client class uses a supplier class. It refers to both; the package that it is in owns it.
class KEL_API KelDependency final : public KelRelationship {
public:
    KelDependency();
    ~KelDependency() override;

    /// Each sets the class at that end, replacing an earlier one.
    bool addClientClass(KelClass* client);
    [[nodiscard]] KelClass* getClientClass() const;
    bool addSupplierClass(KelClass* supplier);
    [[nodiscard]] KelClass* getSupplierClass() const;

private:
    friend struct KelRelations;
    KelOne clientClass_;
    KelOne supplierClass_;
};
