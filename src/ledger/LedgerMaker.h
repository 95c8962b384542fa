#pragma once

#include "ledger/Ledger.h"
#include "ledger/ModelIndex.h"
#include "ledger/SourceObject.h"
#include "ledger/SourceText.h"
#include "ledger/makeLedger.h"
#include "ledger/propertyTable.h"
#include "units/UnitTree.h"

#include <tsl/robin_map.h>
#include <tsl/robin_set.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

class KelModelElement;

namespace notation {
struct Event;
}

namespace ledger {

/// Walks through the text of a model and its units and judges each object and property as soon as what it depends on
/// has been read: most at their end, roles with their association, notes with their diagram, and views of
/// relationships, which may stand in front of these, at the end of the text.
class LedgerMaker {
public:
    LedgerMaker(const units::UnitTree& tree, const KelModel& model, const Choices& choices);
    ~LedgerMaker();
    LedgerMaker(const LedgerMaker&) = delete;
    LedgerMaker& operator=(const LedgerMaker&) = delete;

    Ledger make();

private:
    struct OpenText;

    // The text (LedgerMaker.cpp).
    void open(std::size_t file);
    void take(const notation::Event& event);
    void startObject(const notation::Event& event);
    void endObject();
    void addProperty(const notation::Event& event);
    void noteBadBytes(std::string_view bytes, const notation::Place& place, std::uint64_t column);
    void noteBadNames(const notation::Event& event);
    const units::Unit* unitAt(const notation::Place& place);
    SourceText& currentText();
    SourceText& textOf(std::uint32_t file) { return *texts_[file]; }

    // The ledger (settle.cpp).
    KindTally& kindOf(std::string_view bytes);
    PropertyTally& propertyOf(KindTally& kind, std::string_view bytes);
    void count(Counts& counts, const Reason& reason);
    void settle(SourceObject& object);
    void settleValue(const SourceObject& owner, const SourceValue& value, Verdict verdict);
    void settleValues(SourceObject& object);
    void settleHeld(SourceObject& object, const Verdict& verdict);

    // What became of an object; those that begin have no properties yet (judge*.cpp).
    void begin(SourceObject& object, SourceObject* parent);
    void finish(SourceObject& object, SourceObject* parent);
    [[nodiscard]] std::string nameOf(const SourceObject& object);
    [[nodiscard]] std::string taken(std::string_view bytes, std::uint32_t file);
    [[nodiscard]] std::string textOf(const SourceObject& object, std::string_view property);
    void drop(SourceObject& object, const Reason& reason, std::string detail = {});
    bool claim(const KelObject& object, const SourceObject& by);
    void missing(SourceObject& object);

    void beginPackage(SourceObject& object, const SourceObject* parent);
    void finishPackage(SourceObject& object);
    void beginClass(SourceObject& object, const SourceObject* parent);
    void beginAttribute(SourceObject& object, const SourceObject* parent);
    void finishAttribute(SourceObject& object);
    void beginOperation(SourceObject& object, const SourceObject* parent);
    void beginParameter(SourceObject& object, const SourceObject* parent);
    void finishTyped(SourceObject& object, std::string_view property);

    void finishAssociation(SourceObject& object, const SourceObject* parent);
    void finishRoles(SourceObject& object);
    [[nodiscard]] Verdict whyNoAssociation(const SourceObject& object);
    void finishRelationship(SourceObject& object, const SourceObject* parent);
    void placed(SourceObject& object, const SourceObject* parent);

    void beginDiagram(SourceObject& object, const SourceObject* parent);
    void finishDiagram(SourceObject& object);
    void finishClassView(SourceObject& object);
    void finishRelationshipView(SourceObject& object);
    void finishNotes(SourceObject& diagram);
    void finishDeferred();

    const units::UnitTree& tree_;
    const KelModel& model_;
    Choices choices_;
    ModelIndex index_;
    Ledger ledger_;
    TextRests rests_;
    std::vector<std::shared_ptr<SourceText>> texts_; // by file
    std::vector<std::unique_ptr<OpenText>> open_;    // the innermost unit last
    std::vector<SourceObject> objects_; // those in front of `depth_` are open; the others keep their memory
    std::size_t depth_ = 0;
    SourceValue* value_ = nullptr; // what a further piece of text belongs to
    std::uint64_t order_ = 0;

    bool started_ = false; // the logical view has been met
    std::optional<std::string> mutedBy_;
    KelObject* lastClass_ = nullptr;                                   // that the text came upon
    tsl::robin_map<const KelObject*, std::uint64_t> claimed_;          // which objects have been found, by what line
    tsl::robin_map<std::string, const KelModelElement*> associations_; // by quid

    struct Drawn {
        KelModelElement* element = nullptr;
        std::string instead; // the number of the view that stands for this one
    };
    tsl::robin_map<std::string, Drawn> drawn_;      // on the current diagram, by number
    tsl::robin_set<const KelObject*> drawnClasses_; // likewise
    struct Deferred {
        SourceObject view;
        const KelObject* diagram;
        const KelModelElement* client;
        const KelModelElement* supplier;
    };
    std::vector<Deferred> deferred_;
};

} // namespace ledger
