// Classifiers and their features: KelClass, attributes, operations, arguments, joins and mappings.
#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelFeature.h"
#include "host/model/KelJoin.h"
#include "host/model/KelKey.h"
#include "host/model/KelMappingObject.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"
#include "host/model/links/KelRelations.h"

KelClass::KelClass() : KelClassifier(KelElementType::classObject) {}

KelClass::~KelClass() {
    dissolve();
}

bool KelClass::addAttribute(KelAttribute* object) {
    return KelRelations::classAttributes.link(this, object);
}

KelAttribute* KelClass::getAttribute(int index) const {
    return attributes()[index];
}

KelAttribute* KelClass::getAttribute(const KelString& name, int* index) const {
    int found = 0;
    KelAttribute* named = attributes().findNamed(name, &found);
    if (named != nullptr && index != nullptr) {
        *index = found;
    }
    return named;
}

bool KelClass::addOperation(KelOperation* object) {
    return KelRelations::classOperations.link(this, object);
}

bool KelClass::addArgument(KelArgument* object) {
    return KelRelations::classArguments.link(this, object);
}

bool KelClass::addKey(KelKey* object) {
    return KelRelations::classKeys.link(this, object);
}

KelCandidateKey* KelClass::getPrimaryKey() const {
    return static_cast<KelCandidateKey*>(primaryKey_.get());
}

KelFeature::~KelFeature() {
    dissolve();
}

bool KelFeature::addType(KelType* object) {
    return KelRelations::featureType.set(this, object);
}

KelType* KelFeature::getType() const {
    return static_cast<KelType*>(type_.get());
}

KelAttribute::KelAttribute() : KelStructuralFeature(KelElementType::attribute) {}

KelAttribute::KelAttribute(const KelAttribute& other) : KelAttribute() {
    setFrom(other);
}

KelAttribute& KelAttribute::operator=(const KelAttribute& other) {
    if (this != &other) {
        setFrom(other);
    }
    return *this;
}

KelAttribute::~KelAttribute() {
    dissolve();
}

KelClass* KelAttribute::getAssociatedClass() const {
    return static_cast<KelClass*>(class_.get());
}

bool KelAttribute::addKey(KelKey* object) {
    return KelRelations::keyAttributes.link(object, this);
}

bool KelAttribute::removeKey(KelKey* object) noexcept {
    return KelRelations::keyAttributes.unlink(object, this);
}

KelOperation::KelOperation() : KelModelObject(KelElementType::operation) {}

KelOperation::~KelOperation() {
    dissolve();
}

KelClass* KelOperation::getAssociatedClass() const {
    return static_cast<KelClass*>(class_.get());
}

bool KelOperation::addArgument(KelArgument* object) {
    return KelRelations::operationArguments.link(this, object);
}

bool KelOperation::addReturnType(KelType* object) {
    return KelRelations::returnType.set(this, object);
}

KelType* KelOperation::getReturnType() const {
    return static_cast<KelType*>(returnType_.get());
}

KelArgument::KelArgument() : KelModelObject(KelElementType::argument) {}

KelArgument::~KelArgument() {
    dissolve();
}

KelOperation* KelArgument::getOperation() const {
    return static_cast<KelOperation*>(operation_.get());
}

KelClass* KelArgument::getAssociatedClass() const {
    return static_cast<KelClass*>(class_.get());
}

bool KelArgument::addType(KelType* object) {
    return KelRelations::argumentType.set(this, object);
}

KelType* KelArgument::getType() const {
    return static_cast<KelType*>(type_.get());
}

KelJoin::KelJoin() : KelClassifier(KelElementType::join) {}

KelJoin::~KelJoin() {
    dissolve();
}

KelJoinRole::KelJoinRole() : KelModelObject(KelElementType::joinRole) {}

KelJoinRole::~KelJoinRole() {
    dissolve();
}

KelClassifierMap::KelClassifierMap() : KelMappingObject(KelElementType::classifierMap) {}

KelClassifierMap::~KelClassifierMap() {
    dissolve();
}

KelTransformation::KelTransformation() : KelMappingObject(KelElementType::transformation) {}

KelTransformation::~KelTransformation() {
    dissolve();
}
