#pragma once

#include "host/model/KelPackage.h"

class KelMetadataOrigin;
class KelType;

/// The root of a model. Owns its packages, its types (in name order) and its metadata origins.
///
/// The host owns the model itself, usually as a local variable: an import fills it and never deletes it. Its destructor
/// deletes all objects in it.
class KEL_API KelModel final : public KelPackage {
public:
    KelModel();
    ~KelModel() override;

    /// Deletes all objects that the model owns and clears its name, description and physical name. The model itself
    /// remains alive and can be used again.
    void recursiveDelete() noexcept override;
    /// Whether the model owns no object. Its name and other texts do not count.
    [[nodiscard]] bool isEmpty() const noexcept;

    bool addMetadataOrigin(KelMetadataOrigin* origin);
    [[nodiscard]] KelLinks<KelMetadataOrigin> metadataOrigins() const { return KelLinks<KelMetadataOrigin>(origins_); }

    /// Accepts types of equal names.
    bool addType(KelType* type);
    /// Take a type out; the caller then owns it. Its users keep it as their type.
    bool removeType(KelType* type) noexcept;
    bool removeType(int index) noexcept;
    [[nodiscard]] KelLinks<KelType> types() const { return KelLinks<KelType>(types_); }

private:
    friend struct KelRelations;
    KelMany types_{KelOrder::byName};
    KelMany origins_;
};
