#include "ledger/Ledger.h"

#include "ledger/reasons.h"

#include <algorithm>

namespace ledger {

namespace {

template <class Thing>
std::vector<const Thing*> sorted(const ByText<Thing>& things) {
    std::vector<const Thing*> list;
    for (const auto& [bytes, thing] : things) {
        list.push_back(&thing);
    }
    std::ranges::sort(list, {}, [](const Thing* thing) -> const std::string& { return thing->name; });
    return list;
}

/// The reasons that `EntryKeeper` leaves out, by their texts: kinds have reasons of their own with the same ones.
constexpr std::array passedOver{std::string_view(reasons::layout.text), std::string_view(reasons::toolProperties.text),
                                std::string_view(reasons::toolSettings.text)};

} // namespace

bool EntryKeeper::wants(const Reason& reason) const {
    return reason.outcome != Outcome::imported && reason.weight != Weight::bulk &&
           std::ranges::find(passedOver, reason.text) == passedOver.end();
}

Counts& Counts::operator+=(const Counts& other) {
    for (std::size_t index = 0; index < byOutcome.size(); ++index) {
        byOutcome[index] += other.byOutcome[index];
    }
    return *this;
}

std::vector<const PropertyTally*> KindTally::sortedProperties() const {
    return sorted(properties);
}

Counts KindTally::propertyCounts() const {
    Counts sum;
    for (const auto& [bytes, property] : properties) {
        sum += property.counts;
    }
    return sum;
}

std::vector<const KindTally*> Ledger::sortedKinds() const {
    return sorted(kinds);
}

Counts Ledger::objects() const {
    Counts sum;
    for (const auto& [bytes, kind] : kinds) {
        sum += kind.objects;
    }
    return sum;
}

Counts Ledger::properties() const {
    Counts sum = unnamed;
    for (const auto& [bytes, kind] : kinds) {
        sum += kind.propertyCounts();
    }
    return sum;
}

} // namespace ledger
