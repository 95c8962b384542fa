// Data types: the users of a type, the concrete types, enumerated values, and aliases.
#include "host/model/KelAliasType.h"
#include "host/model/KelArgument.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelConcreteType.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelFeature.h"
#include "host/model/KelModel.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"
#include "host/model/KelTypeValue.h"
#include "host/model/KelTypeValueByPosition.h"
#include "host/model/links/KelRelations.h"

KelType::~KelType() {
    dissolve();
}

KelModel* KelType::getModel() const {
    return static_cast<KelModel*>(model_.get());
}

bool KelType::addFeature(KelFeature* object) {
    return KelRelations::featureType.link(object, this);
}

bool KelType::addArgument(KelArgument* object) {
    return KelRelations::argumentType.link(object, this);
}

bool KelType::addOperation(KelOperation* object) {
    return KelRelations::returnType.link(object, this);
}

bool KelType::removeFeature(int index) noexcept {
    return KelRelations::featureType.unlink(features()[index], this);
}

bool KelType::removeArgument(int index) noexcept {
    return KelRelations::argumentType.unlink(arguments()[index], this);
}

bool KelType::removeOperation(int index) noexcept {
    return KelRelations::returnType.unlink(operations()[index], this);
}

KelTypeTexts& KelTypeTexts::operator=(const KelTypeTexts& other) {
    if (this != &other) {
        texts_ = other.texts_ != nullptr ? std::make_unique<Texts>(*other.texts_) : nullptr;
    }
    return *this;
}

KelTypeTexts::Texts& KelTypeTexts::change() {
    if (texts_ == nullptr) {
        texts_ = std::make_unique<Texts>();
    }
    return *texts_;
}

const KelTypeTexts::Texts& KelTypeTexts::none() noexcept {
    static const Texts empty;
    return empty;
}

KelConcreteType::~KelConcreteType() {
    dissolve();
}

bool KelConcreteType::containsTypeValue(const KelTypeValue* /*value*/) const {
    return false;
}

KelTypeValue* KelConcreteType::getTypeValue(int /*index*/) const {
    return nullptr;
}

KelTypeValue* KelConcreteType::getTypeValue(const KelString& /*name*/, int* /*index*/) const {
    return nullptr;
}

void KelConcreteType::getTypeValueByPosition(KelTypeValueByPosition& values) const {
    values.empty();
}

KelBaseType::KelBaseType() : KelConcreteType(KelElementType::baseType) {}

KelBaseType::~KelBaseType() {
    dissolve();
}

KelDerivedType::KelDerivedType() : KelConcreteType(KelElementType::derivedType) {}

KelDerivedType::~KelDerivedType() {
    dissolve();
}

bool KelDerivedType::containsTypeValue(const KelTypeValue* object) const {
    return object != nullptr && typeValues().holds(*object);
}

KelTypeValue* KelDerivedType::getTypeValue(int index) const {
    return typeValues()[index];
}

KelTypeValue* KelDerivedType::getTypeValue(const KelString& name, int* index) const {
    int found = 0;
    KelTypeValue* named = typeValues().findNamed(name, &found);
    if (named != nullptr && index != nullptr) {
        *index = found;
    }
    return named;
}

void KelDerivedType::getTypeValueByPosition(KelTypeValueByPosition& values) const {
    values.empty();
    for (const KelTypeValue* value : typeValues()) {
        values.addElement(value, true);
    }
}

bool KelDerivedType::addDerivedFromConcreteType(KelConcreteType* object) {
    return KelRelations::derivedFrom.set(this, object);
}

KelConcreteType* KelDerivedType::getDerivedFromConcreteType() const {
    return static_cast<KelConcreteType*>(derivedFrom_.get());
}

bool KelDerivedType::addTypeValue(KelTypeValue* object) {
    return KelRelations::typeValues.link(this, object);
}

bool KelDerivedType::removeTypeValue(KelTypeValue* object) noexcept {
    return KelRelations::typeValues.unlink(this, object);
}

KelTypeValue::KelTypeValue() : KelModelObject(KelElementType::typeValue) {}

KelTypeValue::~KelTypeValue() {
    dissolve();
}

KelDerivedType* KelTypeValue::getDerivedType() const {
    return static_cast<KelDerivedType*>(derivedType_.get());
}

namespace {

int positionOf(const void* element) {
    return static_cast<const KelTypeValue*>(element)->position;
}

} // namespace

int KelTypeValueByPosition::compare2Object(const void* left, const void* right) const {
    return positionOf(left) - positionOf(right);
}

int KelTypeValueByPosition::compare2Key(const void* element, const void* key) const {
    return positionOf(element) - *static_cast<const int*>(key);
}

namespace {

/// The type whose properties the alias shows. For an alias of nothing it is a type without properties.
const KelConcreteType& shownBy(const KelAliasType& alias) {
    static const KelBaseType none;
    const KelConcreteType* actual = alias.getActualType();
    return actual != nullptr ? *actual : none;
}

} // namespace

KelAliasType::KelAliasType() : KelType(KelElementType::aliasType) {}

KelAliasType::~KelAliasType() {
    dissolve();
}

const KelString& KelAliasType::getDataType() const {
    return shownBy(*this).getDataType();
}

int KelAliasType::getLength() const {
    return shownBy(*this).getLength();
}

int KelAliasType::getScale() const {
    return shownBy(*this).getScale();
}

const KelString& KelAliasType::getInitialValue() const {
    return shownBy(*this).getInitialValue();
}

const KelString& KelAliasType::getLowerBound() const {
    return shownBy(*this).getLowerBound();
}

const KelString& KelAliasType::getUpperBound() const {
    return shownBy(*this).getUpperBound();
}

bool KelAliasType::getUserDefined() const {
    return shownBy(*this).getUserDefined();
}

const KelString& KelAliasType::getNativeDataType() const {
    return shownBy(*this).getNativeDataType();
}

const KelString& KelAliasType::getUserDataType() const {
    return shownBy(*this).getUserDataType();
}

const KelString& KelAliasType::getNativeLogicalDataType() const {
    return shownBy(*this).getNativeLogicalDataType();
}

int KelAliasType::getTypeValueCount() const {
    return shownBy(*this).getTypeValueCount();
}

const KelConcreteType* KelAliasType::getActualType() const {
    const KelType* at = this;
    while (at != nullptr && at->elementType == KelElementType::aliasType) {
        at = static_cast<const KelAliasType*>(at)->getType();
    }
    return static_cast<const KelConcreteType*>(at);
}

bool KelAliasType::containsTypeValue(const KelTypeValue* value) const {
    return shownBy(*this).containsTypeValue(value);
}

KelTypeValue* KelAliasType::getTypeValue(int index) const {
    return shownBy(*this).getTypeValue(index);
}

KelTypeValue* KelAliasType::getTypeValue(const KelString& name, int* index) const {
    return shownBy(*this).getTypeValue(name, index);
}

void KelAliasType::getTypeValueByPosition(KelTypeValueByPosition& values) const {
    shownBy(*this).getTypeValueByPosition(values);
}

bool KelAliasType::addType(KelType* object) {
    const KelType* at = object;
    while (at != nullptr && at != this && at->elementType == KelElementType::aliasType) {
        at = static_cast<const KelAliasType*>(at)->getType();
    }
    return at != this && KelRelations::aliasOf.set(this, object);
}

KelType* KelAliasType::getType() const {
    return static_cast<KelType*>(type_.get());
}
