#include "host/model/KelTraversalOperation.h"

KelTraversalOperation::~KelTraversalOperation() = default;

void KelTraversalOperation::pre_process(KelObject* /*object*/, void*& /*userData*/) {}
