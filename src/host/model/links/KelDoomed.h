#pragma once

class KelObject;

/// The objects of this thread whose owner is gone and who are to be deleted next.
///
/// An owner that is deleted puts here what it owns instead of deleting it on the spot, and the outermost
/// deletion then empties the list. However deep the owners are nested, deletion thus takes no stack. The list
/// runs through the owner links of the objects, which are free by then, so it never allocates.
class KelDoomed {
public:
    /// Detaches the object from its owners and puts it on the list, unless it is there or is being deleted.
    static void add(KelObject& object) noexcept;
    /// Deletes everything on the list, and what joins it meanwhile. Does nothing while it is at it already.
    static void deleteAll() noexcept;
};
