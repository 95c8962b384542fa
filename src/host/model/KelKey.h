#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelAttribute;
class KelClass;

/// A key of a class, which owns it. Refers to the attributes that make it up, in name order.
class KEL_API KelKey : public KelModelObject {
public:
    ~KelKey() override;

    bool addAttribute(KelAttribute* attribute);
    bool removeAttribute(KelAttribute* attribute) noexcept;
    [[nodiscard]] KelLinks<KelAttribute> attributes() const { return KelLinks<KelAttribute>(attributes_); }

    /// The other side of `KelClass::addKey`.
    bool addAssociatedClass(KelClass* associatedClass);
    [[nodiscard]] KelClass* getAssociatedClass() const;

    bool userDefined = false; // made by whoever built the model

protected:
    using KelModelObject::KelModelObject;

private:
    friend struct KelRelations;
    KelOne class_;
    KelMany attributes_{KelOrder::byName};
};
