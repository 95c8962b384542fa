#pragma once

#include "scanner/Rule.h"

/// The effects of the rules. Each is called only when its rule's guards let it. Where a rule's reader found no value
/// the builder is not called; what else the effect does happens all the same.
namespace rose {

// PackageActions.cpp: packages, diagrams, and the objects that are not imported.
void closePackage(const Reading& reading);
void createPackage(const Reading& reading);
void createClassDiagram(const Reading& reading);
void enterMechanism(const Reading& reading);

// ClassActions.cpp
void createClass(const Reading& reading);
void createParameterizedClass(const Reading& reading);
void createInstantiatedClass(const Reading& reading);
void createClassUtility(const Reading& reading);
void createParameterizedClassUtility(const Reading& reading);
void createInstantiatedClassUtility(const Reading& reading);
void createMetaclass(const Reading& reading);
void addStereotype(const Reading& reading);
void createEnumType(const Reading& reading);
void setAbstract(const Reading& reading);
void setPersistent(const Reading& reading);
void setSpace(const Reading& reading);

// FeatureActions.cpp: attributes, arguments, and the properties that several kinds of objects share.
void createAttribute(const Reading& reading);
void createArgument(const Reading& reading);
void connectType(const Reading& reading);
void setInitialValue(const Reading& reading);
void setFriend(const Reading& reading);
void setStatic(const Reading& reading);
void setDerived(const Reading& reading);
void setVirtual(const Reading& reading);
void setVisibility(const Reading& reading);
void setContainment(const Reading& reading);

// OperationActions.cpp
void createOperation(const Reading& reading);
void setConcurrency(const Reading& reading);
void setOperationVisibility(const Reading& reading);
void setReturnType(const Reading& reading);
void expectPrecondition(const Reading& reading);
void expectPostcondition(const Reading& reading);
void expectSemantics(const Reading& reading);
void setOperationText(const Reading& reading);

// RelationshipActions.cpp: associations, their roles, and the other relationships.
void createAssociation(const Reading& reading);
void createAssociationRole(const Reading& reading);
void createAssociationClass(const Reading& reading);
void setCardinality(const Reading& reading);
void setNavigable(const Reading& reading);
void markAggregation(const Reading& reading);
void enterQualifier(const Reading& reading);
void setQuid(const Reading& reading);
void createGeneralization(const Reading& reading);
void createRealization(const Reading& reading);
void createDependency(const Reading& reading);
void bindSupplier(const Reading& reading);

// ViewActions.cpp: what is drawn on a diagram.
void addClassView(const Reading& reading);
void createAssociationInView(const Reading& reading);
void connectAssociationToDiagram(const Reading& reading);
void enterGeneralizationView(const Reading& reading);
void enterRealizationView(const Reading& reading);
void enterUsesView(const Reading& reading);
void enterRoleView(const Reading& reading);
void enterNoteView(const Reading& reading);
void enterCompartment(const Reading& reading);
void expectNoteAttachment(const Reading& reading);
void createToolId(const Reading& reading);
void setClient(const Reading& reading);

// TextActions.cpp: documentation and labels.
void expectDiagramText(const Reading& reading);
void placeText(const Reading& reading);

} // namespace rose
