#pragma once

#include "host/model/KelElementType.h"
#include "ledger/kindTable.h"
#include "notation/damage.h"

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ledger {

struct PropertyRow;

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>()(text); }
};
/// A map from texts of a file, as bytes. Pointers to values stay valid.
template <class Thing>
using ByText = std::unordered_map<std::string, Thing, TextHash, std::equal_to<>>;

/// Numbers by outcome.
struct Counts {
    std::array<std::uint64_t, outcomeWords.size()> byOutcome{};

    std::uint64_t& operator[](Outcome outcome) { return byOutcome[static_cast<std::size_t>(outcome)]; }
    [[nodiscard]] std::uint64_t of(Outcome outcome) const { return byOutcome[static_cast<std::size_t>(outcome)]; }
    [[nodiscard]] std::uint64_t total() const { return byOutcome[0] + byOutcome[1] + byOutcome[2]; }
    Counts& operator+=(const Counts& other);
};

/// Properties without entries.
struct PropertyGroup {
    const Reason* reason = nullptr;
    std::uint64_t count = 0;
    std::uint32_t file = 0; ///< of the first of them
    notation::Place first;
};

/// The properties of one name in the objects of one kind.
struct PropertyTally {
    std::string name;                  ///< UTF-8, as all texts here
    const PropertyRow* row = nullptr;  ///< null if it has none
    Counts counts;                     ///< including those with entries
    std::vector<PropertyGroup> groups; ///< by reason, of those without entries

    // Used while the ledger is made.
    std::string_view bytes;            ///< the name as in the file
    const Reason* fixed = nullptr;     ///< of those of imported objects, whatever their values; may be null
    bool isLookedAt = false;           ///< the start of its value is needed
    PropertyTally* follower = nullptr; ///< the one that followed it the last time
};

/// The objects of one kind and their properties.
struct KindTally {
    std::string name;
    const KindRow* row = nullptr;
    Counts objects;
    ByText<PropertyTally> properties;

    // Used while the ledger is made.
    std::string_view bytes;         ///< the name as in the file
    PropertyTally* first = nullptr; ///< the first property of the last object of this kind

    /// By name.
    [[nodiscard]] std::vector<const PropertyTally*> sortedProperties() const;
    [[nodiscard]] Counts propertyCounts() const;
};

/// An object, or a property that has its entry.
struct Entry {
    const KindTally* kind = nullptr;
    const PropertyTally* property = nullptr; ///< null for an object
    std::uint32_t file = 0;
    notation::Place place;
    std::string name; ///< of the object
    const Reason* reason = nullptr;
    std::string detail; ///< the subject of the reason; may be empty
};

struct Ledger;

/// A damage and its file. The reader may have skipped text because of it.
struct DamagedPlace {
    std::uint32_t file = 0;
    notation::Damage damage;
};
/// The number of damages with entries; further ones are only counted.
inline constexpr std::size_t mostDamages = 1000;

/// Bytes of a text that are invalid in the encoding of its file.
struct BadBytes {
    std::uint32_t file = 0;
    notation::Place place;
    std::string bytes; ///< as in the file
};
/// The number of them that are kept; further ones are only counted.
inline constexpr std::size_t mostBadBytes = 1000;

/// Takes the entries of a ledger in the order of the files' text, each as soon as its outcome is known.
class EntrySink {
public:
    EntrySink() = default;
    EntrySink(const EntrySink&) = delete;
    EntrySink& operator=(const EntrySink&) = delete;
    virtual ~EntrySink() = default;

    /// Whether entries with that reason are wanted. They are all that `take` gets; the others are not even made.
    [[nodiscard]] virtual bool wants(const Reason& /*reason*/) const { return true; }
    /// Whether the properties without entries are to be grouped (`PropertyTally::groups`).
    [[nodiscard]] virtual bool wantsGroups() const { return true; }
    /// `ledger` has the files' names already. Exceptions end the making of the ledger.
    virtual void take(const Ledger& ledger, const Entry& entry) = 0;
};

/// Keeps the entries that explain what did not become of the files as it is: those of what was changed or dropped,
/// except layout and properties and settings of tools, of which there may be more than of all else.
class EntryKeeper final : public EntrySink {
public:
    [[nodiscard]] bool wants(const Reason& reason) const override;
    [[nodiscard]] bool wantsGroups() const override { return false; }
    void take(const Ledger& /*ledger*/, const Entry& entry) override { entries_.push_back(entry); }
    /// Their pointers are to parts of the ledger. In the order of the files' text.
    [[nodiscard]] const std::deque<Entry>& getEntries() const { return entries_; }

private:
    std::deque<Entry> entries_; // does not move them, as there are many
};

/// The number of objects of one type in the finished model, by the part of the ledger that explains them.
struct Accounts {
    std::uint64_t byObject = 0;   ///< made from an object of the files
    std::uint64_t byProperty = 0; ///< caused by an object or a property of the files
    std::uint64_t byRepair = 0;   ///< made to complete the model
    std::uint64_t byNothing = 0;  ///< not explained; always 0 unless the bridge did not report the object
};

/// The outcomes of all objects and properties of a model file and its units.
struct Ledger {
    Ledger() = default;
    Ledger(const Ledger&) = delete; // its parts point to each other
    Ledger& operator=(const Ledger&) = delete;
    Ledger(Ledger&&) = default;
    Ledger& operator=(Ledger&&) = default;

    std::vector<std::string> files; ///< paths
    ByText<KindTally> kinds;
    Counts unnamed;                    ///< properties that are not counted by kind and name
    std::vector<DamagedPlace> damages; ///< the first `mostDamages`
    std::uint64_t damageCount = 0;
    std::vector<BadBytes> badBytes; ///< the first `mostBadBytes`
    std::uint64_t badByteCount = 0;
    std::uint64_t losses = 0; ///< of objects and properties
    std::map<KelElementType, Accounts> accounts;

    [[nodiscard]] Counts objects() const;
    [[nodiscard]] Counts properties() const;
    /// By name.
    [[nodiscard]] std::vector<const KindTally*> sortedKinds() const;
};

/// A finished ledger with entries, for those who show it. Owns nothing.
struct KeptLedger {
    const Ledger& ledger;
    const std::deque<Entry>& entries; ///< of an `EntryKeeper`
};

} // namespace ledger
