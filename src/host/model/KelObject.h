#pragma once

#include "host/KelApi.h"
#include "host/containers/KelArrayInterface.h"
#include "host/model/KelElementType.h"
#include "host/model/KelMetaClass.h"
#include "host/text/KelString.h"

#include <cstdint>

class KelEncodingConverter;
class KelTraversalOperation;

/// The root of the repository's classes: an identified, named object that takes part in relations.
///
/// Ownership. An object made with `new` belongs to its maker until an `add...` operation of an owner accepts it;
/// from then on the owner deletes it. Deleting an object first detaches it from its owner and from everything
/// that refers to it, then deletes what it owns; every reference to a deleted object thereby becomes null or
/// leaves its collection, and nothing is left dangling. However deep the model is, deletion does not recurse.
///
/// Every `add...` operation of the repository says whether it accepted its argument. It refuses a null pointer,
/// an object already in that collection, an owned object that already has an owner of that kind (the first owner
/// keeps it), and an attribute whose name its class already has. A link to one object is replaced by a later
/// call. A refused object stays with whoever had it.
///
/// Objects are not copyable, but for the classes that say so; `setFrom` copies fields, never links.
/// A model must be used by one thread at a time.
class KEL_API KelObject {
public:
    KelObject(const KelObject&) = delete;
    KelObject& operator=(const KelObject&) = delete;

    /// Copies the name and the fields of the nearest class that both objects are of, and none of the links.
    virtual void setFrom(const KelObject& other);
    virtual ~KelObject();
    /// Detaches the object from its owner; the caller then owns it.
    virtual void removeAggregationAssembly() noexcept;
    /// Deletes the object and everything it aggregates. The object must have been made with `new`; a model is
    /// emptied instead and stays alive, since it belongs to the host.
    virtual void recursiveDelete() noexcept;
    /// Takes the object out of every reference, those it makes and those made to it. With `fromOwner` it leaves
    /// its owner too and belongs to the caller.
    virtual void isolate(bool fromOwner) noexcept;
    /// Whether the object is of the class with this code, or of one derived from it.
    virtual bool isInstanceOf(KelElementType code) const;
    /// The owning object, or null.
    virtual KelObject* getParent() const;
    /// How many owners the object has: 0 or 1, but for an argument, which an operation and a class may share.
    virtual int getParentCount() const;
    virtual bool operator==(const KelObject& other) const;
    virtual bool operator!=(const KelObject& other) const;
    /// Whether the other object is of the very same class and has the same name and fields. Links do not count.
    virtual bool equals(const KelObject& other) const;
    /// Whether another object refers to this one. Being owned is not being referred to.
    virtual bool isReferenced() const;
    /// Converts every text of this object and of everything it aggregates between two encodings, but for metadata
    /// origins, which are in the host's encoding. `stringCount` grows by one for every text that is not empty,
    /// `errorCount` by one for each of them that held bytes invalid in the source encoding; such a text is converted
    /// all the same, with U+FFFD for what was invalid.
    virtual void transcode(KelEncodingConverter* from, KelEncodingConverter* to, int& stringCount, int& errorCount);
    /// Visits this object and everything it aggregates, depth first. `userData` is handed to `pre_process`,
    /// which may replace it for the object's children and for its own `post_process`. An argument that two owners
    /// share is visited once.
    virtual void depthTraversal(KelTraversalOperation& operation, void* userData);
    /// Renames the object, which moves to its new place wherever it is kept in name order. A name that it has
    /// already changes nothing.
    virtual void setName(const KelString& name);
    /// As above, and takes over the text's buffer.
    void setName(KelString&& name);
    virtual const KelString& getName() const;
    virtual KelString getDisplayName() const;
    /// Visits what this object aggregates, but not the object itself.
    virtual void _depthTraversal(KelTraversalOperation& operation, void* userData);
    virtual const KelMetaClass& getMetaClass() const;

    /// Finds in `array`, whose elements are repository objects, the first one named `name` at or after the index
    /// that `index` points to (0 when null). Returns it and stores its index, or returns null. Costs O(log n) on
    /// every collection of the repository, and a walk on other arrays.
    KelObject* _getn(const KelArrayInterface* array, const KelString& name, int* index) const;

    /// The class's code, never changed after construction.
    const KelElementType elementType;

private:
    mutable std::uint32_t numberStamp_ = 0; // which numbering gave the number; stands here to fill a gap

public:
    /// For the use of whoever builds a model; never interpreted here, not deleted, not copied. Null in a new object.
    /// While an import runs it is the bridge's, which keeps the quids of associations there, and nobody else may set
    /// it in that model. An import ends by setting it to null in every object; from then on it is the host's.
    void* generalPointer = nullptr;

protected:
    explicit KelObject(KelElementType code) : elementType(code) {}
    /// Takes the object out of every relation and deletes what it owns. Called by the destructor of every class
    /// that takes part in a relation, while the object is still whole; calls after the first do nothing.
    void dissolve() noexcept;
    /// Deletes everything the object owns.
    void deleteOwned() noexcept;
    /// The comparison of `equals` for two objects of the same class.
    [[nodiscard]] bool finalEquals(const KelObject& other) const;

private:
    friend class KelDoomed;
    friend class KelNumbering;

    bool dissolved_ = false; // taken out of every relation
    bool doomed_ = false;    // about to be deleted because its owner is gone
    mutable std::uint32_t number_ = 0;
    KelString name_;
};
