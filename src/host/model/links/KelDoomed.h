#pragma once

class KelObject;

/// The list of this thread's objects that are deleted next, because their owners were deleted.
///
/// An owner that is deleted adds the objects that it owns to the list instead of deleting them itself, and the
/// outermost deletion then empties the list. Deletion therefore takes no stack, however deep the owners are nested. The
/// list is linked through the owner links of the objects, which are free by then, so it never allocates.
class KelDoomed {
public:
    /// Detaches the object from its owners and adds it, unless it is in the list or being deleted already.
    static void add(KelObject& object) noexcept;
    /// Deletes all objects in the list, and those added meanwhile. A nested call does nothing.
    static void deleteAll() noexcept;
};
