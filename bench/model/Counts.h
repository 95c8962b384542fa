#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string_view>

namespace bench {

/// What a made model file holds and its imported model must hold, too. In the order of `countedThings()`.
enum class Counted : std::uint8_t {
    packages,
    classes,
    attributes,
    operations,
    arguments,
    associations,
    roles,
    generalizations,
    realizations,
    dependencies,
    candidateKeys,
    foreignKeys,
    roleNameMaps,
    diagrams,
    declaredTypes,
    typeValues,
    drawnElements,
    subtypes,
    supertypes,
    keyAttributes,
    rolesForeignKeys,
    types,
    returnTypes,
    roleClasses,
    realizationClasses,
    specificationClasses,
    clients,
    suppliers,
    notes,
    noteCharacters,
    descriptionCharacters,
    initialValueCharacters,
};

/// Where the JSON form of a model shows a counted thing.
enum class Shown : std::uint8_t {
    asObjectIn,     ///< an object in the list of that name
    asKind,         ///< an object whose `kind` is that word
    asIdIn,         ///< a number in the list of that name
    asId,           ///< a number under that name
    asTextIn,       ///< a text in the list of that name
    asCharactersOf, ///< the characters of the texts under that name, or in the list of that name
};

struct CountedThing {
    Counted counted;
    Shown shown;
    std::string_view member; ///< the name, or the word, in the JSON form
    std::string_view label;
};

inline constexpr std::size_t countedKinds = static_cast<std::size_t>(Counted::initialValueCharacters) + 1;

const std::array<CountedThing, countedKinds>& countedThings() noexcept;

/// How many there are of every counted thing.
class Counts {
public:
    void add(Counted counted, std::uint64_t number = 1) noexcept {
        numbers_[static_cast<std::size_t>(counted)] += number;
    }
    std::uint64_t of(Counted counted) const noexcept { return numbers_[static_cast<std::size_t>(counted)]; }

    friend bool operator==(const Counts&, const Counts&) = default;

    /// Writes one JSON object in a line: every label with its number, noughts left out.
    friend std::ostream& operator<<(std::ostream& out, const Counts& counts);

private:
    std::array<std::uint64_t, countedKinds> numbers_{};
};

} // namespace bench
