#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelAttribute;
class KelClass;

/// A key of a class, which owns it. Refers to its attributes, in name order; an attribute may be part of several keys.
class KEL_API KelKey : public KelModelObject {
public:
    ~KelKey() override;

    /// Accepts attributes of any class.
    bool addAttribute(KelAttribute* attribute);
    bool removeAttribute(KelAttribute* attribute) noexcept;
    [[nodiscard]] KelLinks<KelAttribute> attributes() const { return KelLinks<KelAttribute>(attributes_); }

    /// As `KelClass::addKey`: the class owns the key. Refused when the key has a class already.
    bool addAssociatedClass(KelClass* associatedClass);
    [[nodiscard]] KelClass* getAssociatedClass() const;

    bool userDefined = false; // an import sets it on the candidate keys that it makes

protected:
    using KelModelObject::KelModelObject;

private:
    friend struct KelRelations;
    KelOne class_;
    KelMany attributes_{KelOrder::byName};
};
