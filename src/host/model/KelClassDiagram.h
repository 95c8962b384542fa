#pragma once

#include "host/model/KelDiagram.h"

/// A diagram of classes and their relationships: the only kind of diagram there is.
class KEL_API KelClassDiagram final : public KelDiagram {
public:
    KelClassDiagram();
    ~KelClassDiagram() override;
};
