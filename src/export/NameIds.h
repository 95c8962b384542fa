#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace exporter {

// The parts of element ids, which `ElementIds` puts together for models in the repository. Programs that know a model
// by its JSON document alone put them together themselves.

/// Whether a quid may be part of an id: ASCII letters, digits, ".", "-" and "_".
[[nodiscard]] bool mayBeId(std::string_view quid);
/// The id of the only element with this quid.
[[nodiscard]] std::string idOfQuid(std::string_view quid);
/// The id of the element that was given this hash of its name.
[[nodiscard]] std::string idOfName(std::uint64_t hash);

/// Gives the elements that have no quid of their own the hashes of their names, in a walk through the model in the
/// order of the JSON document.
///
/// Used by one thread. Throws `std::bad_alloc`. Each owner's name is hashed once for a kind, so deep models cost no
/// more than flat ones.
class NameIds {
public:
    /// The words of the kinds; several kinds may have one word.
    explicit NameIds(const std::vector<std::string_view>& kinds);
    NameIds(const NameIds&) = delete;
    NameIds& operator=(const NameIds&) = delete;
    ~NameIds();

    /// From now on the elements are in an owner of this name, until it is left. The model itself is not entered.
    void enter(std::string_view owner);
    /// Leaves the owners that were entered after the first `count`.
    void leaveTo(std::size_t count);
    /// The hash of an element in the owner entered last: of its kind and qualified name, or of these with the first
    /// number that no element has. `kind` is an index into the kinds.
    [[nodiscard]] std::uint64_t take(std::size_t kind, std::string_view name);

private:
    class Hashes;

    std::unique_ptr<Hashes> hashes_;
};

} // namespace exporter
