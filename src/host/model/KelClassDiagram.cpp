#include "host/model/KelClassDiagram.h"

KelClassDiagram::KelClassDiagram() : KelDiagram(KelElementType::classDiagram) {}

KelClassDiagram::~KelClassDiagram() {
    dissolve();
}
