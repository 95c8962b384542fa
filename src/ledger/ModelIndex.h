#pragma once

#include "host/model/KelElementType.h"
#include "ledger/Claims.h"

#include <tsl/robin_set.h>

class KelArgument;
class KelAssociation;
class KelClass;
class KelClassDiagram;
class KelDesignPackage;
class KelDiagram;
class KelElement;
class KelModel;
class KelNote;
class KelOperation;
class KelPackage;

namespace ledger {

/// The objects of a finished model by what a model file says of them. The model must not change.
class ModelIndex {
public:
    explicit ModelIndex(const KelModel& model);

    [[nodiscard]] const KelModel& model() const { return model_; }
    /// The class of that name; there is one at most.
    [[nodiscard]] KelClass* findClass(std::string_view name);
    /// The package of the classes that are only named; null when there is none.
    [[nodiscard]] const KelDesignPackage* homeOfNamed() const { return homeOfNamed_; }

    /// Each takes the first object that nobody has taken yet; null when there is none.
    KelPackage* takePackage(const KelPackage& parent, std::string_view name);
    KelPackage* takePackageAnywhere(std::string_view name);
    KelDiagram* takeDiagram(const KelPackage* package, std::string_view name);
    KelOperation* takeOperation(const KelClass& owner, std::string_view name);
    KelArgument* takeArgument(const KelObject& owner, std::string_view name);
    /// `signature` as `signatureOf` makes it.
    KelAssociation* takeAssociation(std::string_view signature);
    KelObject* takeRelationship(KelElementType kind, const KelClass& client, const KelClass& supplier);
    /// The note of that text on an element, or on any (null). Only the first bytes of texts are looked at.
    KelNote* takeNote(const KelObject* element, std::string_view text);

    /// The first relationship of that kind between two classes, taken or not; null when there is none.
    [[nodiscard]] KelObject* findRelationship(KelElementType kind, const KelClass& client, const KelClass& supplier);

    /// The names of an association, of its roles and of their classes as one text.
    [[nodiscard]] static std::string signatureOf(const KelAssociation& association);
    static void addToSignature(std::string& signature, std::string_view name);

private:
    void addPackage(const KelPackage& package);
    void addClass(const KelClass& added);
    void addElements(const KelDesignPackage& package);
    void addNotes(const KelElement& element);
    Claims& relationships(KelElementType kind);

    const KelModel& model_;
    const KelDesignPackage* homeOfNamed_ = nullptr;
    Claims packages_;
    Claims packagesByName_;
    Claims classes_;
    Claims diagrams_;
    Claims operations_;
    Claims arguments_;
    Claims associations_;
    Claims generalizations_;
    Claims realizations_;
    Claims dependencies_;
    Claims notes_;
    tsl::robin_set<const KelObject*> takenNotes_;
};

} // namespace ledger
