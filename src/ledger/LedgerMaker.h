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

class KelDiagram;
class KelModelElement;
class KelNote;

namespace notation {
struct Event;
}

namespace ledger {

/// The name of an object of the model, as reasons tell it.
[[nodiscard]] std::string quoted(const KelObject& object);

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
    void noteBadValue(const notation::Event& event);
    void noteBadWord(const notation::Event& event, std::uint64_t end);
    void noteBadHead(const notation::Event& event, bool isKindPlain);
    void addDamage(const notation::Damage& damage);
    const units::Unit* unitAt(const notation::Place& place);
    SourceText& currentText();
    SourceText& textOf(std::uint32_t file) { return *texts_[file]; }

    // The ledger (settle.cpp).
    KindTally& kindOf(std::string_view bytes);
    PropertyTally& propertyOf(SourceObject& owner, std::string_view bytes);
    void count(Counts& counts, const Reason& reason);
    void settle(SourceObject& object);
    void settleValue(const SourceObject& owner, const SourceValue& value, Verdict verdict);
    void settleValues(SourceObject& object);
    bool hasReached(const SourceObject& owner, const SourceValue& value);
    static const Reason& always(const SourceObject& owner, const PropertyTally& property);
    void settleHeld(SourceObject& object, const Verdict& verdict);

    // What became of an object; those that begin have no properties yet (judge*.cpp).
    void begin(SourceObject& object, SourceObject* parent);
    void finish(SourceObject& object, SourceObject* parent);
    [[nodiscard]] std::string nameOf(const SourceObject& object);
    [[nodiscard]] std::string taken(std::string_view bytes, std::uint32_t file);
    [[nodiscard]] std::string textOf(const SourceObject& object, std::string_view property);
    void drop(SourceObject& object, const Reason& reason, std::string detail = {});
    bool claim(const KelObject& object, const SourceObject& by);
    void missing(SourceObject& object, const SourceObject* parent);
    static void take(SourceObject& object, KelObject& found, const KelObject& holder, const KelObject* expected);
    [[nodiscard]] const KelObject* reachOf(const PropertyTally& property) const;
    [[nodiscard]] bool isReading() const { return started_ && !mutedBy_; }

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

    void beginClassView(const SourceObject& object);
    void beginDiagram(SourceObject& object, const SourceObject* parent);
    void finishClassView(SourceObject& object, const SourceObject* parent);
    void finishRelationshipView(SourceObject& object, const SourceObject* parent);
    void settleView(SourceObject& view, const KelDiagram& diagram, const KelObject* shown, bool isAstray);
    void finishDeferred();

    // Notes (judgeNotes.cpp).
    /// The notes of a diagram of the file and what attaches them.
    struct DiagramNotes {
        const KelDiagram* diagram; ///< of the model
        std::vector<SourceObject> views;
        std::vector<SourceObject> attachments;
        tsl::robin_map<std::string, std::size_t> byNumber;      ///< the place in `views`
        tsl::robin_map<std::string, const KelObject*> elements; ///< on the diagram, by number
    };
    void deferNotes(SourceObject& holder);
    void noteDrawn(const KelDiagram& diagram, const std::string& reference, KelModelElement& shown);
    void finishNotes();
    void attach(DiagramNotes& notes, SourceObject& attachment);
    void finishNote(SourceObject& view, KelNote* found);
    [[nodiscard]] std::string textOfNote(const SourceObject& view);

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
    SourceValue* value_ = nullptr;  // what a further piece of text belongs to
    SourceValue* holder_ = nullptr; // what a first one may belong to
    std::uint64_t order_ = 0;
    KindTally* lastKind_ = nullptr;

    bool started_ = false; // the logical view has been met
    std::optional<std::string> mutedBy_;
    // What the import gives properties and parts to, whatever they stand in; null for what the model does not have.
    KelClass* lastClass_ = nullptr;
    KelOperation* lastOperation_ = nullptr;
    KelDiagram* lastDiagram_ = nullptr;
    const KelObject* active_ = nullptr; // the last object of all

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
        const KelDiagram* diagram;
        bool isAstray; // the diagram is not the one that it stands in
    };
    std::vector<Deferred> deferred_;
    std::vector<DiagramNotes> notes_;
    tsl::robin_map<const KelObject*, std::size_t> notesOf_; // the place in `notes_` by diagram
};

} // namespace ledger
