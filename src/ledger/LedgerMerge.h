#pragma once

#include "ledger/SourceText.h"
#include "ledger/makeLedger.h"
#include "ledger/propertyTable.h"
#include "source/TracedText.h"

#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <tsl/robin_map.h>
#include <tsl/robin_set.h>
#include <vector>

namespace ledger {

/// The name of an object of the model as reasons tell it, in quotes; of a nameless one what it is and whose.
[[nodiscard]] std::string quoted(const KelObject& object);
/// Whether an object of the subject is judged at its end, by the steps of what stands in it.
[[nodiscard]] bool isLate(Subject subject);
/// The name of the type of something that has one, in quotes.
[[nodiscard]] std::string typeName(const KelObject& typed);
/// The beginning of a text in quotes.
[[nodiscard]] std::string shown(std::string_view text);

/// A property whose outcome depends on that of its object.
struct WaitingProperty {
    PropertyTally* tally = nullptr;
    notation::Place place;
    const Reason* ifImported = nullptr;
    std::uint64_t entry = 0; ///< the number of its entry, if it has one
    bool hasEntry = false;
};

/// An object of the files that has begun and not ended.
struct OpenObject {
    KindTally* kind = nullptr;
    std::string key;        ///< the property that it is the value of
    std::string name;       ///< bytes as they stand
    std::string secondName; ///< likewise; of a view what it shows
    std::string fileName;   ///< likewise; of the unit that it stands for
    std::string reference;  ///< the number behind its "@"
    std::string client;     ///< of an attachment: the numbers of the views that it joins
    std::string supplier;
    KelObject* own = nullptr;        ///< what it became; null when nothing, or while that is not known
    const Reason* dropped = nullptr; ///< why nothing in it is imported; null when that may be
    Verdict verdict;
    std::uint32_t file = 0;
    notation::Place place;
    bool isImplied = false; ///< the file lacks its beginning: it is not counted
    bool isWaiting = false; ///< its outcome is not told yet
    bool isUnit = false;
    bool isLoaded = true;
    const units::Unit* unit = nullptr; ///< that it stands for, or null
    std::uint64_t entry = 0;           ///< the number of its entry
    PropertyTally* lastProperty = nullptr;

    // Of a view, which steps of its properties decide about.
    const KelObject* holder = nullptr;               ///< the diagram or element that has what the view shows
    KelImportReason refusal = KelImportReason::none; ///< the first one
    source::ObjectNumber note = 0;                   ///< that an attachment has placed
    std::vector<WaitingProperty> properties;         ///< those that are imported if the view is

    [[nodiscard]] Subject subject() const { return kind->row->subject; }
};

/// The merge of the files' text with the steps of an import. Steps belong to the object's head or the property that
/// began last before them.
class LedgerMerge {
public:
    LedgerMerge(const units::UnitTree& tree, const source::Trace& trace, const KelModel& model, const Choices& choices,
                EntrySink* entries);

    Ledger make();

private:
    using Effects = std::span<const source::Effect>;

    /// A property that has begun and not been settled.
    struct OpenProperty {
        PropertyTally* tally = nullptr; ///< null: none
        notation::Place place;
        bool hasBegun = false;        ///< its value has
        bool isOver = false;          ///< what follows is not its value
        bool isJudged = false;        ///< its outcome may depend on its value
        std::uint64_t valueBegin = 0; ///< where its text begins; 0 without a text
        bool isQuoted = false;        ///< the text is in quotes, not in "|" lines
        bool hasValue = false;        ///< it is neither empty nor FALSE
        bool hasEscape = false;       ///< the quoted text holds a backslash or a quote
        bool isOdd = false;           ///< it is not ASCII from some point on
        bool isWaiting = false;       ///< its outcome depends on that of its object
        std::string start;            ///< the first bytes of the value
        std::string odd;              ///< the value from the first piece on that is not ASCII
    };

    // The text (LedgerMerge.cpp).
    void take(const notation::Event& event);
    void startObject(const notation::Event& event);
    void endObject();
    void startProperty(const notation::Event& event);
    void takeValue(const notation::Event& event);
    void settlePending(Effects effects);
    SourceText& textOf(std::uint32_t file) { return *texts_[file]; }
    KindTally& kindOf(std::string_view bytes);
    PropertyTally& propertyOf(OpenObject& owner, std::string_view bytes);
    OpenObject* innermost() { return depth_ > 0 ? &objects_[depth_ - 1] : nullptr; }
    OpenObject* parent() { return depth_ > 1 ? &objects_[depth_ - 2] : nullptr; }

    // The ledger.
    void count(Counts& counts, const Reason& reason);
    std::uint64_t addEntry(const OpenObject& object);
    void tell(OpenObject& object);
    void settleProperty(Effects effects);
    void group(PropertyTally& tally, const Reason& reason, std::uint32_t file, const notation::Place& place);
    void flush();
    [[nodiscard]] std::string nameOf(const OpenObject& object);
    [[nodiscard]] std::string taken(std::string_view bytes, std::uint32_t file);

    // The outcome of properties (judgeProperty.cpp).
    [[nodiscard]] Verdict judgeProperty(OpenObject& owner, Effects effects);
    [[nodiscard]] Verdict judgeChange(const OpenObject& owner, const source::Effect& effect);
    [[nodiscard]] Verdict judgeType(const source::Effect& effect);
    [[nodiscard]] Verdict withoutEffect(const OpenObject& owner, Effects effects);
    void noteText(OpenObject& owner, source::ObjectNumber number);
    [[nodiscard]] bool isInText(const source::Effect& effect) const;
    bool hear(OpenObject& view, const source::Effect& effect);

    // The outcome of objects (judgeObject.cpp).
    void judgeHead(OpenObject& object, OpenObject* parent, Effects effects);
    void judgeMade(OpenObject& object, const OpenObject* parent, source::ObjectNumber number);
    void judgeGone(OpenObject& object, const OpenObject* parent, source::ObjectNumber number);
    void judgePlace(OpenObject& object, const OpenObject* parent, const source::Fate& fate);
    void judgeUnmade(OpenObject& object, const OpenObject* parent, Effects effects);
    void judgeClassView(OpenObject& view, const OpenObject* parent, Effects effects);
    void judgeUnit(OpenObject& package);
    void noteValue(OpenObject& owner);
    void judgeEnd(OpenObject& object, OpenObject* parent);
    void judgeShown(OpenObject& view, const OpenObject* parent);
    void judgeNote(OpenObject& note, const OpenObject* parent);
    void claim(OpenObject& object, source::ObjectNumber number);
    void drop(OpenObject& object, const Reason& reason, std::string detail = {});
    void missing(OpenObject& object, const OpenObject* parent, const Reason& otherwise);
    [[nodiscard]] Verdict refusal(KelImportReason why, source::ObjectNumber obstacle, const OpenObject* parent);
    [[nodiscard]] std::string lineOf(source::ObjectNumber number) const;
    void noteGate(const source::Effect& effect);
    void account();

    const units::UnitTree& tree_;
    const source::Trace& trace_;
    const KelModel& model_;
    Choices choices_;
    EntrySink* sink_;
    source::TracedText text_;
    Ledger ledger_;
    std::vector<std::shared_ptr<SourceText>> texts_; // by file
    std::vector<OpenObject> objects_; // those in front of `depth_` are open; the others keep their memory
    std::size_t depth_ = 0;
    bool isHeadPending_ = false; // the head of the innermost object has not been settled
    OpenProperty property_;
    KindTally* lastKind_ = nullptr;

    std::deque<Entry> waiting_;      // from the first whose outcome is not known
    std::uint64_t firstWaiting_ = 0; // its number

    KelImportReason gate_ = KelImportReason::none;
    std::string gateDetail_;
    std::vector<std::uint64_t> lines_; // of the objects of the files, by the number of what they became
    static constexpr std::uint8_t severalAdditions = 2;
    std::vector<std::uint8_t> additions_; // how many texts were put into a description, by the object's number
    tsl::robin_map<source::ObjectNumber, std::string> noteNumbers_; // of the views that the notes' texts stand in
    tsl::robin_set<std::string> onlyNamed_; // the classes without a definition in the logical view
    std::vector<bool> isTold_;              // by number: an object of the files became it
};

} // namespace ledger
