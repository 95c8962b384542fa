#pragma once

#include "host/model/KelElementType.h"
#include "ledger/kindTable.h"
#include "notation/damage.h"

#include <array>
#include <cstdint>
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
/// Things by a text of the file, in its bytes. Pointers to them stay good.
template <class Thing>
using ByText = std::unordered_map<std::string, Thing, TextHash, std::equal_to<>>;

/// How many by outcome.
struct Counts {
    std::array<std::uint64_t, outcomeWords.size()> byOutcome{};

    std::uint64_t& operator[](Outcome outcome) { return byOutcome[static_cast<std::size_t>(outcome)]; }
    [[nodiscard]] std::uint64_t of(Outcome outcome) const { return byOutcome[static_cast<std::size_t>(outcome)]; }
    [[nodiscard]] std::uint64_t total() const { return byOutcome[0] + byOutcome[1] + byOutcome[2]; }
    Counts& operator+=(const Counts& other);
};

/// Properties that are not told one by one.
struct PropertyGroup {
    const Reason* reason = nullptr;
    std::uint64_t count = 0;
    std::uint32_t file = 0; ///< where the first of them stands
    notation::Place first;
};

/// The properties of one name in the objects of one kind.
struct PropertyTally {
    std::string name;                  ///< UTF-8, as all texts here
    const PropertyRow* row = nullptr;  ///< null when none stands for it
    Counts counts;                     ///< those that are told one by one included
    std::vector<PropertyGroup> groups; ///< by reason, of those that are not

    // For whoever makes the ledger.
    std::string_view bytes;            ///< the name as it stands in the file
    bool isPlain = true;               ///< it is ASCII
    bool isLookedAt = false;           ///< the beginning of its value is compared with something
    PropertyTally* follower = nullptr; ///< that came behind it the last time
};

/// The objects of one kind and their properties.
struct KindTally {
    std::string name;
    const KindRow* row = nullptr;
    Counts objects;
    ByText<PropertyTally> properties;

    // For whoever makes the ledger.
    std::string_view bytes;         ///< the name as it stands in the file
    PropertyTally* first = nullptr; ///< that an object of this kind began with the last time
    KindTally* follower = nullptr;  ///< that came behind it the last time

    /// By name.
    [[nodiscard]] std::vector<const PropertyTally*> sortedProperties() const;
    [[nodiscard]] Counts propertyCounts() const;
};

/// An object, or a property that is told by itself.
struct Entry {
    const KindTally* kind = nullptr;
    const PropertyTally* property = nullptr; ///< null for an object
    std::uint32_t file = 0;
    notation::Place place;
    std::string name; ///< of the object
    const Reason* reason = nullptr;
    std::string detail; ///< what the reason is about; may be empty
};

struct Ledger;

/// Something wrong with the notation of a file, whose reader may have skipped text for it.
struct DamagedPlace {
    std::uint32_t file = 0;
    notation::Damage damage;
};
/// How many damages are told one by one.
inline constexpr std::size_t mostDamages = 1000;

/// Bytes of a text that the encoding of its file does not have.
struct BadBytes {
    std::uint32_t file = 0;
    notation::Place place;
    std::string bytes; ///< as they stand
};

/// Takes the entries of a ledger in the order of the files' text, each as soon as its outcome is known.
class EntrySink {
public:
    EntrySink() = default;
    EntrySink(const EntrySink&) = delete;
    EntrySink& operator=(const EntrySink&) = delete;
    virtual ~EntrySink() = default;

    /// What it throws ends the making of the ledger. `ledger` has the files' names.
    virtual void take(const Ledger& ledger, const Entry& entry) = 0;
};

/// Keeps the entries that explain what did not become of the files as it is: those of what was changed or dropped,
/// except layout and properties and settings of tools, of which there may be more than of all else.
class EntryKeeper final : public EntrySink {
public:
    void take(const Ledger& ledger, const Entry& entry) override;
    /// Their pointers are to parts of the ledger. In the order of the files' text.
    [[nodiscard]] const std::vector<Entry>& getEntries() const { return entries_; }

private:
    std::vector<Entry> entries_;
};

/// How many objects of one type the finished model holds, by what the ledger tells them with.
struct Accounts {
    std::uint64_t byObject = 0;   ///< an object of the files became it
    std::uint64_t byProperty = 0; ///< it came with an object or a property of the files
    std::uint64_t byRepair = 0;   ///< it was made to complete the model
    std::uint64_t byNothing = 0;  ///< nothing tells of it: 0 unless the import has made it unseen
};

/// What became of everything that a model file, with its units, holds.
struct Ledger {
    Ledger() = default;
    Ledger(const Ledger&) = delete; // its parts point to each other
    Ledger& operator=(const Ledger&) = delete;
    Ledger(Ledger&&) = default;
    Ledger& operator=(Ledger&&) = default;

    std::vector<std::string> files; ///< paths
    ByText<KindTally> kinds;
    std::vector<DamagedPlace> damages; ///< the first of them
    std::uint64_t damageCount = 0;
    std::uint64_t badByteCount = 0;
    std::uint64_t losses = 0; ///< how many objects and properties
    std::map<KelElementType, Accounts> accounts;

    [[nodiscard]] Counts objects() const;
    [[nodiscard]] Counts properties() const;
    /// By name.
    [[nodiscard]] std::vector<const KindTally*> sortedKinds() const;
};

/// A finished ledger with entries, for those who show it. Owns nothing.
struct KeptLedger {
    const Ledger& ledger;
    const std::vector<Entry>& entries; ///< of an `EntryKeeper`
};

} // namespace ledger
