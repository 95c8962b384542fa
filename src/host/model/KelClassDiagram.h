#pragma once

#include "host/model/KelDiagram.h"

/// A diagram of classes and their relationships.
class KEL_API KelClassDiagram final : public KelDiagram {
public:
    KelClassDiagram();
    ~KelClassDiagram() override;
};
