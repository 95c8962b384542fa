#pragma once

#include "host/model/KelDeletionObserver.h"

namespace rose {

/// Keeps the builder's state free of deleted objects while it lives, which is one import long: a pointer to a
/// current object becomes null, and waiting lists and indexes let go of the object.
class ImportWatch final : public KelDeletionObserver {
public:
    void deleting(KelObject& object) noexcept override;
};

} // namespace rose
