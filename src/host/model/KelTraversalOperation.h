#pragma once

#include "host/KelApi.h"

class KelObject;

/// What a depth-first traversal does at each object. Must not change what any visited object owns.
class KEL_API KelTraversalOperation {
public:
    virtual ~KelTraversalOperation();
    /// Before the object's children. `userData` is the parent's; what it is set to here goes to the children and
    /// to this object's `post_process`. By default nothing is done.
    virtual void pre_process(KelObject* object, void*& userData);
    /// After the object's children.
    virtual void post_process(KelObject* object, void* userData) = 0;
};
