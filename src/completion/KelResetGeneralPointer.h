#pragma once

#include "host/model/KelTraversalOperation.h"

namespace rose {

/// Removes from each object visited what the builder has hung on it: the quid text and the view number.
class KelResetGeneralPointer final : public KelTraversalOperation {
public:
    void post_process(KelObject* object, void* userData) override;
};

} // namespace rose
