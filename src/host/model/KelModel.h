#pragma once

#include "host/model/KelPackage.h"

class KelMetadataOrigin;
class KelType;

/// The root of a model. Owns its packages, its types, in name order, and its metadata origins.
class KEL_API KelModel final : public KelPackage {
public:
    KelModel();
    ~KelModel() override;

    /// Deletes everything the model owns and clears its texts. The object itself stays: it is the host's.
    void recursiveDelete() noexcept override;
    /// Whether the model owns nothing. It may have a name and other texts of its own.
    [[nodiscard]] bool isEmpty() const noexcept;

    bool addMetadataOrigin(KelMetadataOrigin* origin);
    [[nodiscard]] KelLinks<KelMetadataOrigin> metadataOrigins() const { return KelLinks<KelMetadataOrigin>(origins_); }

    bool addType(KelType* type);
    /// Take a type out without deleting it; the caller then owns it.
    bool removeType(KelType* type) noexcept;
    bool removeType(int index) noexcept;
    [[nodiscard]] KelLinks<KelType> types() const { return KelLinks<KelType>(types_); }

private:
    friend struct KelRelations;
    KelMany types_{KelOrder::byName};
    KelMany origins_;
};
