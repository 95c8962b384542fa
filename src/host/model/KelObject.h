#pragma once

#include "host/KelApi.h"
#include "host/containers/KelArrayInterface.h"
#include "host/model/KelElementType.h"
#include "host/model/KelMetaClass.h"
#include "host/model/links/KelRareEnds.h"
#include "host/text/KelString.h"

#include <cstdint>

class KelEncodingConverter;
class KelTraversalOperation;

/// The root of the repository's classes: an object with a name, fields and links to other objects.
///
/// The following holds for every class of the repository. The other headers only add to it.
///
/// **Ownership.** An object made with `new` belongs to its maker until an `add...` function of an owner accepts it;
/// from then on the owner deletes it. Deleting an object is allowed whether or not it has an owner. It is first
/// detached from its owner and from all objects that refer to it: their links to it become null or leave their
/// collections, and no link dangles. Then the objects that it owns are deleted. Objects never move in memory; code that
/// keeps a plain pointer to one can observe its deletion (`KelDeletionObserver`). Objects are not copyable, except
/// attributes and notes.
///
/// **Links.** A link is known at both of its ends, which always change together.
/// - `add...` returns whether it accepted the object. It refuses null, an object that is already in that collection,
///   and an object that already has an owner of that kind, which remains its owner. A refused object keeps its current
///   owner. A reference to a single object, such as the type of a feature, is different: a later call replaces it, and
///   the call returns true also when the reference is to that object already.
/// - `get...` returns the linked object or null. The caller does not own it.
/// - `remove...` breaks a link and returns false when there is none. An object removed from its owner belongs to the
///   caller.
///
/// **Order.** A collection is in the order of adding unless its class says "in name order". Names are compared byte for
/// byte; objects of the same name keep the order of adding. A search by name returns the first of them.
///
/// **New objects** have no links and no name. Texts are empty, flags false and numbers 0, unless the field says
/// otherwise.
///
/// **Errors.** Linking, setting a text and searching may throw `std::bad_alloc`. Nothing has changed then, except that
/// a link which was to be replaced may be broken. A text above 2,147,483,646 bytes throws `std::length_error`.
/// Deleting, removing and walking by index need no memory and do not throw.
///
/// **Threads.** One thread at a time may use a model. This includes reading, because collections build their indexes on
/// demand. Several threads may each use a model of their own.
///
/// **Cost.** Adding, removing and searching cost at most O(log n) for a collection of n objects, and building an index
/// for its first search O(n log n). Without memory for an index, removing costs O(n). Deleting costs as much as
/// removing each link of the deleted objects, and no stack for the depth of the model. A link end takes one word of
/// memory while it holds one object or none.
class KEL_API KelObject {
public:
    KelObject(const KelObject&) = delete;
    KelObject& operator=(const KelObject&) = delete;

    /// Copies the name and those fields that both objects have from a common base class. Links are not copied, nor are
    /// `toolId` and `generalPointer`. If it throws, some of the fields have been copied.
    virtual void setFrom(const KelObject& other);
    virtual ~KelObject();
    /// Detaches the object from its owner, or owners. The caller then owns it.
    virtual void removeAggregationAssembly() noexcept;
    /// Deletes the object and all objects that it owns. Precondition: it was made with `new`. A model is emptied
    /// instead and remains alive, because it belongs to the host.
    virtual void recursiveDelete() noexcept;
    /// Breaks all links by which the object refers to others or others refer to it. With `fromOwner` it is also
    /// detached from its owner and belongs to the caller. Deletes nothing.
    virtual void isolate(bool fromOwner) noexcept;
    /// Whether the object is of the class with this code, or of one derived from it.
    virtual bool isInstanceOf(KelElementType code) const;
    /// The owner, or null. Of an argument with two owners it is the class.
    virtual KelObject* getParent() const;
    /// The number of owners: 0 or 1, and up to 2 for an argument, which an operation and a class may share.
    virtual int getParentCount() const;
    /// As `equals`.
    virtual bool operator==(const KelObject& other) const;
    virtual bool operator!=(const KelObject& other) const;
    /// Whether the other object is of the same class (not of a derived one) and has the same name and fields. Links,
    /// `toolId` and `generalPointer` are not compared.
    virtual bool equals(const KelObject& other) const;
    /// Whether another object refers to this one, as a feature refers to its type. An owner does not count.
    virtual bool isReferenced() const;
    /// Converts all texts of this object and of the objects that it owns, directly or not, between two encodings.
    /// Metadata origins are left out: they are in the host's encoding already. `stringCount` grows by one for each text
    /// that is not empty, `errorCount` by one for each of these that has bytes invalid in the source encoding; such a
    /// text is converted too, with U+FFFD for each invalid sequence.
    ///
    /// Precondition: neither pointer is null, and both converters have a handle. If it throws, some texts are converted
    /// and others are not. The cost is proportional to the texts.
    virtual void transcode(KelEncodingConverter* from, KelEncodingConverter* to, int& stringCount, int& errorCount);
    /// Visits this object and all objects that it owns, depth first; for an object's parts, in the order of the
    /// relation table (KelRelations.h) and of each collection. `userData` is passed to `pre_process`, which may replace
    /// it for the object's parts and for its own `post_process`. An argument with two owners is visited once.
    ///
    /// The traversal ends with any exception that the operation throws, or with `std::bad_alloc`. It takes heap, not
    /// stack, for the depth of the model, and at most O(log n) per object.
    virtual void depthTraversal(KelTraversalOperation& operation, void* userData);
    /// Renames the object and moves it within all collections in name order that contain it. A name that another object
    /// has is not refused, not even where `add...` would refuse it. O(log n) per collection.
    virtual void setName(const KelString& name);
    /// The same, taking over the text's buffer; does not throw.
    void setName(KelString&& name);
    virtual const KelString& getName() const;
    /// The name as a person is shown it: in every class of the repository, the name.
    virtual KelString getDisplayName() const;
    /// As `depthTraversal`, without a visit to this object itself.
    virtual void _depthTraversal(KelTraversalOperation& operation, void* userData);
    /// The description of the object's class. It lives as long as the library is loaded.
    virtual const KelMetaClass& getMetaClass() const;

    /// Finds in `array`, whose elements are repository objects, the first one named `name` at or after the index
    /// that `index` points to (0 when null). Returns it and stores its index, or returns null and stores nothing. A
    /// null array is an empty one. Costs O(log n) for a collection of the repository, O(n) for another array.
    KelObject* _getn(const KelArrayInterface* array, const KelString& name, int* index) const;

    /// The code of the object's class.
    const KelElementType elementType;

private:
    // Declared here, and with few bits, to fill a gap; a model has millions of objects.
    static constexpr int stampBits = 29;
    mutable std::uint32_t numberStamp_ : stampBits = 0; // which numbering gave the number
    std::uint32_t dissolved_ : 1 = 0;                   // all links are broken
    std::uint32_t doomed_ : 1 = 0;                      // about to be deleted, because its owner was
    std::uint32_t renaming_ : 1 = 0;                    // getting its name together with others

public:
    /// For the code that builds a model. The repository never reads, deletes or copies it; null in a new object.
    /// During an import the bridge uses it (for the quids of associations), and no other code may set it in that model.
    /// An import ends by setting it to null in every object; afterwards it is the host's.
    void* generalPointer = nullptr;

protected:
    explicit KelObject(KelElementType code) : elementType(code) {}
    /// Breaks all links of the object and deletes the objects that it owns. The destructor of every class that adds
    /// link ends calls it, while these still exist; calls after the first do nothing.
    void dissolve() noexcept;
    /// Deletes all objects that this one owns.
    void deleteOwned() noexcept;
    /// The comparison of `equals` for two objects of the same class.
    [[nodiscard]] bool finalEquals(const KelObject& other) const;

private:
    friend class KelDoomed;
    friend class KelElement;
    friend class KelNumbering;
    friend class KelRenaming;
    friend struct KelRelation;

    KelString name_;
    KelRareEnds rareEnds_;
    mutable std::uint32_t number_ = 0; // the last member: a field of 4 bytes fits behind it
};
