#include "builder/BuilderState.h"

namespace rose {

std::FILE* theFile = nullptr;
KelModel* aModel = nullptr;
KelLog* localLog = nullptr;
KelOptionList* theOptions = nullptr;

KelImportObserver* theObserver = nullptr;
KelImportSource theSource;

KelDesignPackage* aPackage = nullptr;
KelDesignPackage* logicalViewPackage = nullptr;
bool startPackages = false;
int InUseCaseView = 0;
KelClassDiagram* aDiagram = nullptr;

KelClass* aClass = nullptr;
KelAttribute* aAttribute = nullptr;
KelAttribute* shadowAttribute = nullptr;
KelOperation* aOperation = nullptr;
KelOperation* keepOperation = nullptr;
KelArgument* aArgument = nullptr;
KelType* aBaseType = nullptr;
KelAssociation* aAssociation = nullptr;
KelAssociationRole* aAssociationRole = nullptr;
KelCandidateKey* candKey = nullptr;
KelForeignKey* forKey = nullptr;
KelGeneralization* aGeneral = nullptr;
KelRealization* aRealization = nullptr;
KelDependency* aDependency = nullptr;
KelModelObject* activeObject = nullptr;

int client = 0;
int physicalId = 0;

bool InQualifier = false;
bool InGeneralizationView = false;
bool InRealizationView = false;
bool InUsesView = false;
bool InAssociationRoleView = false;
bool InAssociationView = false;
bool InCompartment = false;
bool InNoteView = false;
bool attachNote = false;
bool diagramDescription = false;
bool objectMechanism = false;
bool pre = false;
bool post = false;
bool sem = false;

KelNameLinkTree toBeClasses;
KelVector packages;
QuidTree toBeAssociations;
KelVector toBeNotes;
NoteRecord currentNoteId;

void resetBuilderState() {
    aClass = nullptr;
    aAttribute = nullptr;
    aAssociation = nullptr;
    aOperation = nullptr;
    aDiagram = nullptr;
    aGeneral = nullptr;
    aRealization = nullptr;
    aDependency = nullptr;
    aAssociationRole = nullptr;
    aArgument = nullptr;
    aBaseType = nullptr;
    activeObject = nullptr;
    aPackage = nullptr;
    candKey = nullptr;
    forKey = nullptr;
    keepOperation = nullptr;
    InUseCaseView = 0;
    logicalViewPackage = nullptr;
    shadowAttribute = nullptr;

    InAssociationView = false;
    InAssociationRoleView = false;
    InGeneralizationView = false;
    InRealizationView = false;
    InUsesView = false;
    InCompartment = false;
    post = false;
    pre = false;
    sem = false;
    diagramDescription = false;
    attachNote = false;
    startPackages = false;
    InQualifier = false;
    InNoteView = false;
    objectMechanism = false;

    // An import sees nothing of the one before it, these included.
    client = 0;
    physicalId = 0;
    currentNoteId = NoteRecord();
}

} // namespace rose
