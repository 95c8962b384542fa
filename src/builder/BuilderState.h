#pragma once

#include "builder/NoteRecord.h"
#include "builder/QuidTree.h"
#include "host/bridge/KelImportObserver.h"
#include "host/containers/KelNameLinkTree.h"
#include "host/containers/KelVector.h"

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
class KelModelObject;
class KelOperation;
class KelOptionList;
class KelRealization;
class KelType;

/// Everything the builder knows between two keywords of the file, one import at a time in a process.
///
/// A pointer here never owns an object that has been added to the model. The builder owns the classes in
/// `toBeClasses`, the placeholders in `toBeAssociations`, the records in `toBeNotes`, the quid text hung on an
/// association, and whatever was attached to nothing (Unattached.h), until `cleanup` releases them. A pointer to
/// a current object becomes null when the object is deleted (ImportWatch.h).
namespace rose {

// The import.
extern std::FILE* theFile;        // the open model file, or null
extern KelModel* aModel;          // the model being filled
extern KelLog* localLog;          // where messages go
extern KelOptionList* theOptions; // the options of this import

// Who hears of its steps (Trace.h).
extern KelImportObserver* theObserver; // or null
extern KelImportSource theSource;      // where the current step comes from; only kept for an observer

// Packages and diagrams.
extern KelDesignPackage* aPackage;           // the current package; while null, nearly every rule does nothing
extern KelDesignPackage* logicalViewPackage; // the category "Logical View"
extern bool startPackages;                   // whether the logical view has been met
extern int InUseCaseView;                    // how deep the scan is in use-case categories, which are skipped
extern KelVector packages;                   // every package created, in that order
extern KelClassDiagram* aDiagram;            // the current class diagram

// Current objects: the last one of each kind, to which property lines apply.
extern KelClass* aClass;
extern KelAttribute* aAttribute;
extern KelAttribute* shadowAttribute; // the copy of a qualifier in the class at the other end
extern KelOperation* aOperation;
extern KelOperation* keepOperation; // aOperation while parameters belong to it; null: they are the class's
extern KelArgument* aArgument;
extern KelType* aBaseType; // the type last looked up or created
extern KelAssociation* aAssociation;
extern KelAssociationRole* aAssociationRole;
extern KelCandidateKey* candKey; // the key that the qualifiers of the current role make up
extern KelForeignKey* forKey;    // its counterpart, until it is bound to the class at the other end
extern KelGeneralization* aGeneral;
extern KelRealization* aRealization;
extern KelDependency* aDependency;
extern KelModelObject* activeObject; // what the next property line applies to

// View numbers.
extern int client;     // of the last "client" line
extern int physicalId; // read while no object was active; for the next association placed on a diagram

// What the scan is inside of.
extern bool InQualifier;           // attributes are qualifiers of the current role
extern bool InGeneralizationView;  // the next "supplier" belongs to an inherit view
extern bool InRealizationView;     // ... to a realize view
extern bool InUsesView;            // ... to a uses view
extern bool InAssociationRoleView; // ... to a role view, where it means nothing
extern bool InAssociationView;     // an association view waits for its "quidu"
extern bool InCompartment;         // the next view number is a compartment's and is skipped
extern bool InNoteView;            // view numbers and labels belong to a note
extern bool attachNote;            // the next "supplier" attaches a note
extern bool diagramDescription;    // the next label describes the current diagram
extern bool objectMechanism;       // inside an object that is not imported
extern bool pre;                   // the next "PDL" text is a precondition
extern bool post;                  // ... a postcondition
extern bool sem;                   // ... the semantics

// What waits for something read later.
extern KelNameLinkTree toBeClasses; // classes known by name only
extern QuidTree toBeAssociations;   // associations known by quid only, from the views that show them
extern KelVector toBeNotes;         // a NoteRecord for each note text, in reading order
extern NoteRecord currentNoteId;    // the note being read or attached

/// Gives every current object, view number and flag above the value an import starts with. The import context,
/// the packages and the waiting lists are not touched: `cleanup` has emptied them at the end of the last import.
void resetBuilderState();

} // namespace rose
