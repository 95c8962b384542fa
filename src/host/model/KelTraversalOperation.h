#pragma once

#include "host/KelApi.h"

class KelObject;

/// The callbacks of a depth-first traversal (`KelObject::depthTraversal`). The caller of the traversal owns the
/// operation.
///
/// A callback may change fields and texts other than names. It must not add, remove, rename or delete objects that the
/// traversal visits. Any exception that it throws ends the traversal and reaches its caller.
class KEL_API KelTraversalOperation {
public:
    virtual ~KelTraversalOperation();
    /// Called before the object's parts are visited. `userData` is the owner's; the value set here is passed to the
    /// parts and to this object's `post_process`. Does nothing by default.
    virtual void pre_process(KelObject* object, void*& userData);
    /// Called after the object's parts have been visited.
    virtual void post_process(KelObject* object, void* userData) = 0;
};
