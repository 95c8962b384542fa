#pragma once

#include "host/KelApi.h"

#include <cstdint>

class KelObject;

/// The part of a model file that a step of an import comes from. Offsets are bytes from the start of the file that the
/// bridge was given.
struct KelImportSource {
    std::uint64_t begin = 0; ///< the first byte of the keyword, after its blanks
    std::uint64_t end = 0;   ///< the offset after the last byte that was read: of the value, or of its last "|" line
    std::uint64_t used = 0;  ///< how many bytes of the value the import uses
    std::uint64_t left = 0;  ///< how many bytes of the value it leaves out, because a text is too long or holds a NUL
    int rule = 0;            ///< a number that is the same for the same keyword, from 1; otherwise opaque
};

/// Why something is not in the model, or not as the file has it. The words for people are the host's.
enum class KelImportReason : std::uint8_t {
    none,
    // A gate: keywords have no effect until the next class, association, class diagram or package.
    beforeLogicalView, ///< the logical view has not begun
    noPackage,         ///< no package is open
    inMechanism,       ///< the object is of a kind that is not imported
    // A refusal: a keyword has no effect here.
    inUseCaseView,    ///< a package within a use-case view
    noOwner,          ///< the package has the object already, or another package has
    noClass,          ///< no class is current
    noAssociation,    ///< no association is current
    noOperation,      ///< no operation is current
    noDiagram,        ///< no class diagram is current
    nothingActive,    ///< no object is current that has such a property
    nameTaken,        ///< the class has an attribute of that name; `other` is that one
    takesNoArguments, ///< the class is not a template
    drawnAlready,     ///< the diagram shows the object
    endNotDrawn,      ///< an end of the relationship is not a class on the diagram
    nothingToShow,    ///< the diagram's classes have no such relationship, or the view has no association
    tooFewEnds,       ///< an association has fewer than two roles
    endWithoutClass,  ///< a role names no class
    literalsUnusable, ///< the text is not a list of enumeration literals
    // A change that the text does not say as it stands.
    definedTwice,      ///< the class has been defined before; what follows is added to it
    textAdded,         ///< the text was put before the one that the object has
    takenAsTrue,       ///< the value is not looked at
    valueUnknown,      ///< the value is not one of those known; the field has the one for all others
    wholeOnly,         ///< the association is an aggregation, but this role is not its aggregate
    attachedToDiagram, ///< the note's element is not on the diagram, which has the note
    shadow,            ///< the copy of a qualifier, in the class at the other end
    // A repair after the scan, a replacement or a removal.
    attachedToNothing, ///< nothing has accepted the object
    placeholder,       ///< the object stood for one that is defined elsewhere
    becameEnumeration, ///< a class, for an enumerated type
    nameCleared,       ///< the name was made up by the tool that wrote the file
    onlyNamed,         ///< a class that is named but not defined was put into a package of such classes
    splitForKey,       ///< an attribute of several keys; `other` is the copy for one of them
    keyForAggregation, ///< the attributes of an aggregate's foreign key became part of the class's key
    withOwner,         ///< the object belongs to one that is removed
    noSupplier,        ///< a relationship that names no class
    supplierUnknown,   ///< a relationship whose class is defined nowhere
    typeDefaulted,     ///< no type was given
    typeConverted,     ///< a declared type, for one of the target system
    typeByReference,   ///< an attribute that is contained by reference has a type of its own
};

/// Somebody who wants to know, step by step, what an import does with its file.
///
/// An observer hears of every import that runs on its own thread between its construction and its destruction, except
/// while a later observer of that thread exists. Observers of one thread are destroyed in the reverse order of their
/// construction. The import does not own its observer, and the model, log and outcome of an import are the same with
/// and without one.
///
/// A call may keep pointers to objects as long as a `KelDeletionObserver` says that they live; objects never move. It
/// must not change the model. It may throw `std::bad_alloc`, or anything else, which ends the import as any failure
/// does. Steps cost the import one call each; without an observer they cost one comparison each.
class KEL_API KelImportObserver {
public:
    KelImportObserver() noexcept;
    KelImportObserver(const KelImportObserver&) = delete;
    KelImportObserver& operator=(const KelImportObserver&) = delete;
    virtual ~KelImportObserver();

    /// The observer that hears of imports on this thread; null for none.
    [[nodiscard]] static KelImportObserver* current() noexcept;

    /// The file made this object. The first object that a source makes is the one that the file describes there; others
    /// of the same source come with it, or are needed by it. It may be refused, replaced or removed later. After the
    /// scan, when repairs make objects, `by` is empty (`rule` is 0).
    virtual void made(const KelImportSource& by, KelObject& object) = 0;
    /// The file names a class that it has not defined so far; the object stands for it. `made` follows if the class is
    /// defined later.
    virtual void named(const KelImportSource& by, KelObject& object) = 0;
    /// The file set a field of the object, or linked it to `other` (unless null), which a diagram shows, for example.
    /// `why` is `none` when the object has it as the file says.
    virtual void changed(const KelImportSource& by, KelObject& object, KelObject* other, KelImportReason why) = 0;
    /// The keyword has no effect, or the object that it made has no owner. `object` is the one that was refused or
    /// would have been changed, `other` the one that was in its way; either may be null.
    virtual void refused(const KelImportSource& by, KelImportReason why, KelObject* object, KelObject* other) = 0;
    /// From here on, until told otherwise, most keywords have no effect, or, with the reason `none`, they have again.
    virtual void gate(const KelImportSource& at, KelImportReason why) = 0;
    /// The object was changed though the file does not say so. `other`, unless null, was made for it or is what it was
    /// linked to.
    virtual void repaired(KelObject& object, KelImportReason why, KelObject* other) = 0;
    /// `by` takes the place of the object, which is deleted next.
    virtual void replaced(KelObject& object, KelImportReason why, KelObject& by) = 0;
    /// The object and all that it owns are deleted next.
    virtual void removing(KelObject& object, KelImportReason why) noexcept = 0;

private:
    KelImportObserver* outer_;
};
