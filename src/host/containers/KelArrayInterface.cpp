#include "host/containers/KelArrayInterface.h"

KelArrayInterface::~KelArrayInterface() = default;
