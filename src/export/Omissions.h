#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace exporter {

/// One kind of things that a format has no place for, and why. Texts are those of a table that lives as long as the
/// program.
struct Omission {
    std::string_view one;  ///< "operation"
    std::string_view many; ///< "operations"
    std::string_view why;  ///< half a sentence for people: "a table has no behaviour"
};

/// Counts what an export leaves out of a model. Used by one thread.
class Omissions {
public:
    struct Count {
        Omission omission;
        std::uint64_t count = 0;
    };

    /// Takes time proportional to the number of different omissions, of which a format has a few.
    void add(const Omission& omission, std::uint64_t count = 1);

    [[nodiscard]] bool isEmpty() const { return counts_.empty(); }
    /// Those with a count, each once, in the order in which they were first added.
    [[nodiscard]] std::span<const Count> getCounts() const { return counts_; }
    /// The sum of all counts.
    [[nodiscard]] std::uint64_t getTotal() const;
    /// The counts of each kind, whatever the reasons, for people: "12 operations, 1 friend flag". Empty for none.
    [[nodiscard]] std::string summary() const;

    /// Adds a sentence about what was written that people must know, though nothing is left out.
    void addRemark(std::string remark) { remarks_.push_back(std::move(remark)); }
    [[nodiscard]] std::span<const std::string> getRemarks() const { return remarks_; }

private:
    std::vector<std::string> remarks_;
    std::vector<Count> counts_;
};

} // namespace exporter
