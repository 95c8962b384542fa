#pragma once

#include "builder/Notes.h"
#include "builder/Quids.h"
#include "builder/indexes/WaitingClasses.h"
#include "host/bridge/KelImportObserver.h"
#include "host/containers/KelVector.h"
#include "host/model/KelDeletionObserver.h"
#include "host/model/KelModelObject.h"

#include <cstdio>

class KelArgument;
class KelAssociation;
class KelAssociationRole;
class KelAttribute;
class KelCandidateKey;
class KelClass;
class KelClassDiagram;
class KelDependency;
class KelDesignPackage;
class KelForeignKey;
class KelGeneralization;
class KelLog;
class KelModel;
class KelOperation;
class KelOptionList;
class KelRealization;
class KelType;

namespace rose {

/// The current objects: the last one of each kind that the file began or named. Each pointer becomes null when its
/// object is deleted: `ImportWatch` visits all members, and does not compile if one is missing there.
struct CurrentObjects {
    KelDesignPackage* aPackage = nullptr;           ///< while it is null, nearly every rule does nothing
    KelDesignPackage* logicalViewPackage = nullptr; ///< the category "Logical View"
    KelClassDiagram* aDiagram = nullptr;
    KelClass* aClass = nullptr;
    KelAttribute* aAttribute = nullptr;
    KelAttribute* shadowAttribute = nullptr; ///< the copy of a qualifier in the class at the other end
    KelOperation* aOperation = nullptr;
    KelOperation* keepOperation = nullptr; ///< aOperation while parameters belong to it; null: they are the class's
    KelArgument* aArgument = nullptr;
    KelType* aBaseType = nullptr; ///< the type last looked up or created
    KelAssociation* aAssociation = nullptr;
    KelAssociationRole* aAssociationRole = nullptr;
    KelCandidateKey* candKey = nullptr; ///< the key that the qualifiers of the current role make up
    KelForeignKey* forKey = nullptr;    ///< its counterpart, until it is bound to the class at the other end
    KelGeneralization* aGeneral = nullptr;
    KelRealization* aRealization = nullptr;
    KelDependency* aDependency = nullptr;
    KelModelObject* activeObject = nullptr; ///< the object that the next property line applies to

    void clearRelationships() {
        aGeneral = nullptr;
        aRealization = nullptr;
        aDependency = nullptr;
    }
};

/// Everything the builder knows between two keywords of the file. One import at a time uses it, on any thread.
///
/// Ownership: no pointer here owns an object that has been added to the model. The state owns the classes in
/// `toBeClasses`, the placeholders in `toBeAssociations`, the records in `toBeNotes` and the open file, until `cleanup`
/// releases them. The import context belongs to the caller of the import.
struct BuilderState : CurrentObjects {
    // The import.
    std::FILE* theFile = nullptr;              ///< the open model file, or null
    KelModel* aModel = nullptr;                ///< the model being filled
    KelLog* localLog = nullptr;                ///< receives the messages
    const KelOptionList* theOptions = nullptr; ///< the options of this import

    // The observer of its steps (Trace.h).
    KelImportObserver* theObserver = nullptr; ///< or null
    KelImportSource theSource;                ///< the place of the current step; only kept for an observer

    // Packages.
    bool startPackages = false; ///< whether the logical view has been met
    int InUseCaseView = 0;      ///< how deep the scan is in use-case categories, which are skipped
    KelVector packages;         ///< every package created, in that order

    // View numbers.
    int client = 0;     ///< of the last "client" line
    int physicalId = 0; ///< read while no object was active; for the next association placed on a diagram

    // The constructs that the scan is in.
    bool InQualifier = false;           ///< attributes are qualifiers of the current role
    bool InGeneralizationView = false;  ///< the next "supplier" belongs to an inherit view
    bool InRealizationView = false;     ///< ... to a realize view
    bool InUsesView = false;            ///< ... to a uses view
    bool InAssociationRoleView = false; ///< ... to a role view, where it means nothing
    bool InAssociationView = false;     ///< an association view waits for its "quidu"
    bool InCompartment = false;         ///< the next view number is a compartment's and is skipped
    bool InNoteView = false;            ///< view numbers and labels belong to a note
    bool attachNote = false;            ///< the next "supplier" attaches a note
    bool diagramDescription = false;    ///< the next label describes the current diagram
    bool objectMechanism = false;       ///< inside an object that is not imported
    bool pre = false;                   ///< the next "PDL" text is a precondition
    bool post = false;                  ///< ... a postcondition
    bool sem = false;                   ///< ... the semantics

    // Waiting for something that is read later.
    WaitingClasses toBeClasses; ///< classes known by name only
    QuidTree toBeAssociations;  ///< associations known by quid only, from the views that show them
    KelVector toBeNotes;        ///< a NoteRecord for each note text, in reading order
    NoteRecord currentNoteId;   ///< the note being read or attached
};

/// The state of the import under way, or of the last one. `startBuilding` assigns all of it; the operations of the
/// builder and the actions of the scanner change it.
extern BuilderState state;

/// Whether there is an active object and it is of that class.
[[nodiscard]] inline bool isActive(KelElementType type) {
    return state.activeObject != nullptr && state.activeObject->elementType == type;
}

/// Begins an import with a new state for that model, log and options, which must outlive the import. PRECONDITION:
/// `cleanup` has ended the import before.
void startBuilding(KelModel& model, KelLog& log, const KelOptionList* options = nullptr);

/// Keeps the builder's state free of deleted objects during its life, which is that of one import: a pointer to a
/// current object becomes null, and waiting lists and indexes forget the object.
class ImportWatch final : public KelDeletionObserver {
public:
    void deleting(KelObject& object) noexcept override;
};

/// Empties the indexes and frees their memory, as soon as no step needs them any longer; `cleanup` does it in any case.
/// The lists that they index stay as they are.
void clearIndexes() noexcept;

} // namespace rose
