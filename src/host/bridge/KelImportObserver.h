#pragma once

#include "host/KelApi.h"

#include <cstdint>

class KelObject;

/// The part of a model file that causes a step of an import. Offsets are bytes from the start of the file that the
/// bridge was given.
struct KelImportSource {
    std::uint64_t begin = 0; ///< the first byte of the keyword, after its blanks
    std::uint64_t end = 0;   ///< the offset after the last byte read: of the value, or of its last "|" line
    std::uint64_t used = 0;  ///< how many bytes of the value the import uses
    std::uint64_t left = 0;  ///< how many bytes of the value it drops, because the text is too long or contains a NUL
    int rule = 0;            ///< a number that is the same for the same keyword, from 1; otherwise opaque
};

/// The reasons why the model differs from the file. The texts for users are the host's.
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
    // A change by which the model gets something else than the text.
    definedTwice,      ///< the class has been defined before; what follows is added to it
    textAdded,         ///< the text was prepended to the one that the object has
    takenAsTrue,       ///< the value is not read: the keyword alone counts
    valueUnknown,      ///< the value is unknown; the field has the value for all unknown ones
    wholeOnly,         ///< the association is an aggregation, but this role is not its aggregate
    attachedToDiagram, ///< the note's element is not on the diagram, which has the note
    shadow,            ///< the copy of a qualifier, in the class at the other end
    // A repair after the scan, a replacement or a removal.
    attachedToNothing, ///< nothing has accepted the object
    placeholder,       ///< the object represented one that is defined elsewhere
    becameEnumeration, ///< a class was replaced by an enumerated type
    nameCleared,       ///< the name was made up by the tool that wrote the file
    onlyNamed,         ///< a class that is named but not defined was put into a package of such classes
    splitForKey,       ///< an attribute of several keys; `other` is the copy for one of them
    keyForAggregation, ///< the attributes of an aggregate's foreign key became part of the class's key
    withOwner,         ///< the object belongs to one that is removed
    noSupplier,        ///< a relationship that names no class
    supplierUnknown,   ///< a relationship whose class is defined nowhere
    typeDefaulted,     ///< no type was given
    typeConverted,     ///< a declared type was replaced by one of the target system
    typeByReference,   ///< an attribute contained by reference got a separate type
};

/// Callbacks for each step of an import: which parts of the file made, changed or failed to change which objects.
///
/// Construction registers an observer for the calling thread, and destruction unregisters it; the host owns it. An
/// import on that thread calls the observer constructed last. Observers of one thread are destroyed in the reverse
/// order of their construction. Model, log and outcome of an import are the same with and without an observer.
///
/// An observer may keep pointers to objects until a `KelDeletionObserver` reports their deletion; objects never move.
/// It must not change the model. It may throw any exception, which ends the import like any other failure. Each step
/// costs one call; without an observer, one comparison.
class KEL_API KelImportObserver {
public:
    KelImportObserver() noexcept;
    KelImportObserver(const KelImportObserver&) = delete;
    KelImportObserver& operator=(const KelImportObserver&) = delete;
    virtual ~KelImportObserver();

    /// The observer that imports on this thread call; null for none.
    [[nodiscard]] static KelImportObserver* current() noexcept;

    /// The file made this object. The first object of a source is the one that the file describes there; other objects
    /// of the same source belong to it or are needed by it. It may be refused, replaced or removed later. When a repair
    /// after the scan makes the object, `by` is empty (`rule` is 0).
    virtual void made(const KelImportSource& by, KelObject& object) = 0;
    /// The file names a class that it has not defined so far; the object represents that class. `made` follows if the
    /// class is defined later.
    virtual void named(const KelImportSource& by, KelObject& object) = 0;
    /// The file set a field of the object, or linked it to `other` (unless null), for example an element to its
    /// diagram. `why` is `none` when the model has what the file says.
    virtual void changed(const KelImportSource& by, KelObject& object, KelObject* other, KelImportReason why) = 0;
    /// The keyword has no effect, or the object that it made has no owner. `object` is the one that was refused or not
    /// changed, `other` the one that prevented it; either may be null.
    virtual void refused(const KelImportSource& by, KelImportReason why, KelObject* object, KelObject* other) = 0;
    /// From here until the next call of this function, most keywords have no effect; with the reason `none` they have
    /// an effect again.
    virtual void gate(const KelImportSource& at, KelImportReason why) = 0;
    /// The object was changed although the file does not say so. `other`, unless null, was made for it or was linked to
    /// it.
    virtual void repaired(KelObject& object, KelImportReason why, KelObject* other) = 0;
    /// `by` replaces the object, which is deleted next.
    virtual void replaced(KelObject& object, KelImportReason why, KelObject& by) = 0;
    /// The object and all that it owns are deleted next.
    virtual void removing(KelObject& object, KelImportReason why) noexcept = 0;

private:
    KelImportObserver* outer_;
};
