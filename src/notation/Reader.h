#pragma once

#include "notation/Event.h"
#include "notation/Lexer.h"
#include "notation/Line.h"
#include "notation/Nesting.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace notation {

/// What `Reader::skim` has read.
struct Skimmed {
    std::uint64_t properties = 0;
    std::size_t depth = 0; ///< the number of objects that have begun and not ended
    bool isAtEnd = false;  ///< the object has ended
};

/// Reads a file in the notation of nested objects, one event at a time.
///
/// For every file, each construct that starts also ends, in the right order, and each property belongs to the innermost
/// object. Errors in the notation are reported as damages and repaired (docs/notation.md). Used by one thread at a
/// time. Memory is limited by the settings, also for large files and texts: a text that does not fit comes in pieces.
/// Time is proportional to the file.
class Reader {
public:
    struct Settings {
        std::size_t window = InputWindow::usualCapacity;  ///< bytes in memory at a time; 256 at least
        std::size_t longestName = std::size_t{64} * 1024; ///< of names, keys and kinds; longer ones are cut
        std::size_t deepest = 100'000;                    ///< deeper constructs are skipped
        bool isFast = true;                               ///< the events are the same without, but take more time
    };
    /// Further texts of an object's head are values without a key.
    static constexpr std::size_t mostNames = 16;

    /// `source` must live as long. Reads nothing yet.
    explicit Reader(ByteSource& source) : Reader(source, Settings{}) {}
    Reader(ByteSource& source, const Settings& settings);

    /// Advances to the next event; returns false at the end of the file. Throws what the source throws; the reader must
    /// not be used after that.
    bool next();
    [[nodiscard]] const Event& event() const { return event_; }

    /// Reads the next events, if they are those of a whole line in one of the forms of `Line`, and if the next token is
    /// not after `before`: at a fraction of the cost of `next`. Otherwise returns null; `next` reads on then. Throws as
    /// `next` does. The events that are skipped are not in `event`.
    const Line* nextLine(std::uint64_t before = UINT64_MAX);

    /// Takes the start of an object that `depth` of the others contain; returns false if it is not to be read.
    using TakeObject = std::function<bool(std::string_view kind, const Place& place, std::size_t depth)>;
    /// Takes the name of a property with a value that is no object and no list; returns false if it is not to be read.
    using TakeProperty = std::function<bool(std::string_view key, const Place& place)>;
    /// Reads lines, as `nextLine` does, and properties with "|" lines, and counts their properties: up to the line that
    /// ends the innermost object, that one included, or before the first line that cannot be read or that is not to be
    /// read. Without `takeObject` none is, and no list; without `takeProperty` all are. Costs a fraction of `nextLine`.
    Skimmed skim(std::uint64_t before, const TakeObject& takeObject, const TakeProperty& takeProperty);

private:
    struct Head { // of a construct whose start has not been reported yet
        Construct construct = Construct::group;
        Place place;
        std::uint32_t indent = 0;
        bool isFirst = false;
        std::uint64_t end = 0;
    };
    enum class Row : std::uint8_t { top, object, keyed, list, value, group };
    enum class Column : std::uint8_t { open, close, comma, scalar, word, end };
    using Step = bool (Reader::*)(); // returns whether it made an event
    static Step stepFor(Row row, TokenKind token);

    [[nodiscard]] const Token& token() const { return lexer_.token(); }
    [[nodiscard]] Row row() const;
    void advance();
    void report(DamageKind kind, const Place& place);
    void reportUnlessCut(DamageKind kind, const Place& place);
    void reportOpen(DamageKind kind, const Place& place, std::size_t count);
    void takeWord(std::string& word);
    void takeNames();
    void addToName(const Token& piece);
    void takeHead();
    bool start();
    bool startAgain();
    void skipConstruct();
    bool end(bool isImplied);
    bool makeValue(EventKind kind);
    void giveKey();
    bool location();
    void repair(const Nesting::Repair& repair, const Place& place);

    // Lines (ReaderLines.h, ReaderLines.cpp).
    class Skimming;                  // SkimLines.cpp
    struct Block {                   // whole lines with properties, of which the last one ends constructs
        std::uint64_t begin = 0;     // an offset in the input
        std::size_t size = 0;        // 0: none
        std::ptrdiff_t lastLine = 0; // where it begins in the block
        std::uint64_t lines = 0;
        std::size_t ends = 0;
    };
    bool hasLine();
    bool findLine();
    [[nodiscard]] bool isInMemory(const LineStart& line) const;
    bool parseLine(std::uint64_t before, LineStart& after);
    bool findAfter(const char* end, bool isAfterHead, const LineStart& line, LineStart& after) const;
    [[nodiscard]] Place placeOf(const char* at, const LineStart& line) const;
    void push(Construct construct, const Place& place, const LineStart& line);
    void leaveLines();

    class Usual; // UsualEvents.cpp
    void clearEvent(EventKind kind, std::string_view key, const Place& keyPlace, const Place& place);
    bool usualEvent();
    bool anyEvent();

    bool openConstruct();
    bool openUnnamed();
    bool close();
    bool surplusClose();
    bool strayComma();
    bool strayText();
    bool scalar();
    bool unnamedScalar();
    bool key();
    bool wordValue();
    bool wordInList();
    bool wordInGroup();
    bool noValue();
    bool truncated();
    bool finish();

    Settings settings_;
    InputWindow window_;
    Lexer lexer_;
    Nesting nesting_;
    Event event_;
    Line line_;
    LineStart nextLine_;           // while `inLines_`
    bool inLines_ = false;         // a line was read last: the lexer does not know yet
    bool isAtEnd_ = false;         // the source has no more bytes
    std::array<Block, 16> blocks_; // skimmed last, by how they begin

    bool consumes_ = true;    // the current token has been processed
    bool continuing_ = false; // the last event was a value whose text may continue
    bool isKeyed_ = false;    // `key_` waits for its value
    bool straying_ = false;   // stray text before this token was reported
    bool tooDeepTold_ = false;
    bool finished_ = false;
    std::uint64_t controlsLine_ = 0; // the last line whose control bytes were reported
    Damage told_;                    // of the current event
    std::vector<Damage> damages_;    // to be reported, the last one first
    std::size_t ends_ = 0;           // constructs to end next
    bool reopens_ = false;           // and then one to open again
    std::optional<Head> held_;       // and then one to start

    std::string key_;
    Place keyPlace_;
    std::uint32_t keyIndent_ = 0; // of its line if it is the first token there
    std::uint64_t wordEnd_ = 0;   // the offset after the last word taken
    Head head_;
    std::string kind_;
    std::string x_;
    std::string y_;
    std::string reference_;
    std::array<std::string, mostNames> nameTexts_;
    std::array<Name, mostNames> names_;
    std::size_t nameCount_ = 0;
};

// As `event_ = Event()`, which the compiler does with an instruction that takes as long as all the rest of an event.
inline void Reader::clearEvent(EventKind kind, std::string_view key, const Place& keyPlace, const Place& place) {
    event_.kind = kind;
    event_.construct = Construct::object;
    event_.continues = false;
    event_.startsLine = false;
    event_.isImplied = false;
    event_.depth = 0;
    event_.key = key;
    event_.keyPlace = keyPlace;
    event_.text = {};
    event_.y = {};
    event_.names = {};
    event_.reference = {};
    event_.place = place;
    event_.end = 0;
    event_.damage = nullptr;
}

} // namespace notation
