#pragma once

#include "ledger/SourceText.h"
#include "ledger/makeLedger.h"
#include "ledger/propertyTable.h"
#include "source/TracedText.h"

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <tsl/robin_map.h>
#include <tsl/robin_set.h>
#include <vector>

namespace ledger {

/// The name of an object of the model in quotes; of an object without a name its type and owner.
[[nodiscard]] std::string quoted(const KelObject& object);
/// Whether objects of the subject are judged at their end, from the steps of their contents.
[[nodiscard]] bool isLate(Subject subject);
/// The name in quotes of the type of an attribute, argument or operation.
[[nodiscard]] std::string typeName(const KelObject& typed);
/// The start of a text in quotes.
[[nodiscard]] std::string shown(std::string_view text);

/// A property whose outcome depends on that of its object.
struct WaitingProperty {
    PropertyTally* tally = nullptr;
    notation::Place place;
    const Reason* ifImported = nullptr;
    std::uint64_t entry = 0; ///< the number of its entry, if `hasEntry`
    bool hasEntry = false;
};

/// Entries with consecutive numbers, from the first with an unknown outcome on. References are valid until the next
/// `add`. The memory of entries that were taken away is used for the next ones.
class EntryQueue {
public:
    /// An entry without an outcome, at the end.
    Entry& add();
    [[nodiscard]] std::uint64_t nextNumber() const { return firstNumber_ + (end_ - first_); }
    [[nodiscard]] Entry& at(std::uint64_t number) { return entries_[first_ + (number - firstNumber_)]; }
    /// The first entry if its outcome is known, else null.
    [[nodiscard]] const Entry* known() const {
        return first_ != end_ && entries_[first_].reason != nullptr ? &entries_[first_] : nullptr;
    }
    void removeFirst() {
        ++first_;
        ++firstNumber_;
    }

private:
    std::vector<Entry> entries_; // those from `first_` to `end_`
    std::size_t first_ = 0;
    std::size_t end_ = 0;
    std::uint64_t firstNumber_ = 0;
};

/// An object of the files that is being read.
struct OpenObject {
    KindTally* kind = nullptr;
    std::string name;       ///< unchanged bytes; empty if nothing asks for it, as the second one
    std::string secondName; ///< likewise; of a view the element it shows
    std::string fileName;   ///< likewise; of the unit that it refers to
    std::string reference;  ///< the number after its "@"
    std::string client;     ///< of an attachment: the numbers of the views that it joins
    std::string supplier;
    KelObject* own = nullptr;        ///< the object of the model; null if there is none, or none is known yet
    const Reason* dropped = nullptr; ///< why its contents are not imported; null if they may be
    Verdict verdict;
    std::uint32_t file = 0;
    notation::Place place;
    bool isImplied = false; ///< its start is missing from the file: it is not counted
    bool isWaiting = false; ///< its outcome is not recorded yet
    bool isRoot = false;    ///< it is the value of a root_category
    bool isUnit = false;
    bool isLoaded = true;
    const units::Unit* unit = nullptr; ///< that it refers to, or null
    std::uint64_t entry = 0;           ///< the number of its entry, if `hasEntry`
    bool hasEntry = false;
    bool isNameShown = false; ///< `shownName` is known
    std::string shownName;    ///< UTF-8, in entries
    PropertyTally* lastProperty = nullptr;

    // Of a view, which is decided by the steps of its properties.
    const KelObject* holder = nullptr;               ///< the diagram or element that holds the shown element
    KelImportReason refusal = KelImportReason::none; ///< the first one
    source::ObjectNumber note = 0;                   ///< the note that an attachment placed
    std::vector<WaitingProperty> properties;         ///< imported if the view is

    [[nodiscard]] Subject subject() const { return kind->row->subject; }
};

/// Merges the files' text with the steps of an import, in one pass. A step belongs to the last object's head or
/// property that began before it. Objects are judged after their heads, properties after their values, packages and
/// most views at their ends. `makeLedger` has the contract.
class LedgerMerge {
public:
    LedgerMerge(const units::UnitTree& tree, const source::Trace& trace, const KelModel& model, const Choices& choices,
                EntrySink* entries);

    Ledger make(const BeginReading& begin);

private:
    using Effects = std::span<const source::Effect>;

    /// The property that is being read.
    struct OpenProperty {
        PropertyTally* tally = nullptr; ///< null: none
        notation::Place place;
        bool hasBegun = false;        ///< its value has begun
        bool isOver = false;          ///< its value has ended
        bool isJudged = false;        ///< its outcome may depend on its value
        std::uint64_t valueBegin = 0; ///< the offset of its text; 0 without a text
        bool isQuoted = false;        ///< the text is in quotes, not in "|" lines
        bool hasValue = false;        ///< it is neither empty nor FALSE
        bool hasEscape = false;       ///< the quoted text contains a backslash or a quote
        bool isOdd = false;           ///< `odd` has begun
        bool isWaiting = false;       ///< its outcome depends on that of its object
        std::string start;            ///< the first bytes of the value
        std::string odd;              ///< the value from the first piece on that is not ASCII
    };

    /// The head of an object.
    struct Head {
        std::string_view kind;
        std::string_view name = {};
        std::string_view secondName = {};
        std::string_view reference = {};
        std::string_view key = {};
        notation::Place place = {};
        bool isImplied = false;
    };
    /// An object that was counted and has not ended.
    struct SkimmedObject {
        KindTally* kind = nullptr;
        notation::Place place;
    };
    /// A value or a piece of one.
    struct Value {
        notation::EventKind kind;
        std::string_view text;
        std::uint64_t begin = 0; ///< its offset
        bool continues = false;
    };

    // The text (LedgerMerge.cpp).
    void take(const notation::Event& event);
    void take(const notation::Line& line);
    void take(const BadBytes& bytes);
    void skim();
    void skimDropped();
    bool countObject(std::string_view kind, const notation::Place& place, std::size_t depth);
    void judgeQuietHead();
    void startObject(const Head& head);
    void endObject();
    void startProperty(std::string_view key, const notation::Place& place);
    void takeValue(const Value& value);
    bool takeQuietProperty(std::string_view key, const notation::Place& place);
    void settlePending(Effects effects);
    SourceText& textOf(std::uint32_t file) { return *texts_[file]; }
    OpenObject* innermost() { return depth_ > 0 ? &objects_[depth_ - 1] : nullptr; }
    OpenObject* parent() { return depth_ > 1 ? &objects_[depth_ - 2] : nullptr; }

    // The ledger (tallies.cpp).
    KindTally& kindOf(std::string_view bytes);
    PropertyTally& propertyOf(OpenObject& owner, std::string_view bytes);
    void count(Counts& counts, const Reason& reason);
    Entry& addEntry(OpenObject& object, const PropertyTally* property, const notation::Place& place);
    void settleEntry(Entry& entry, OpenObject& object, const Reason& reason, std::string* detail);
    void tell(OpenObject& object);
    void settleProperty(Effects effects);
    void record(OpenObject& owner, PropertyTally& tally, const notation::Place& place, const Reason& reason,
                std::string* detail, bool isWaiting);
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
    bool hasGroups_;                      // the sink wants them
    std::vector<BadByteSearch> searches_; // by file
    notation::Reader::TakeObject countsObject_;
    notation::Reader::TakeProperty takesProperty_;
    source::TracedText text_;
    Ledger ledger_;
    std::vector<std::shared_ptr<SourceText>> texts_; // by file
    std::vector<OpenObject> objects_;                // the first `depth_` are open; the others keep their memory
    std::size_t depth_ = 0;
    std::vector<SkimmedObject> skimmed_; // in the innermost of them
    bool isHeadPending_ = false;         // the head of the innermost object has not been judged yet
    OpenProperty property_;
    std::array<KindTally*, 64> recentKinds_{}; // by length, first and last byte, of which kinds seldom share all

    EntryQueue waiting_;

    KelImportReason gate_ = KelImportReason::none;
    std::string gateDetail_;
    std::vector<std::uint64_t> lines_; // lines in the files, by the number of the object of the model
    static constexpr std::uint8_t severalAdditions = 2;
    std::vector<std::uint8_t> additions_; // the number of texts in a description, by the object's number
    tsl::robin_map<source::ObjectNumber, std::string> noteNumbers_; // the view numbers of the notes with the texts
    tsl::robin_set<std::string> onlyNamed_; // the classes without a definition in the logical view
    std::vector<bool> isTold_;              // by number: made from an object of the files
};

} // namespace ledger
