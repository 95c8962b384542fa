#include "export/relationships.h"

#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelClass.h"
#include "host/model/KelGeneralization.h"
#include "text/ascii.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace exporter {

namespace {

constexpr std::int32_t byValue = 0;
std::optional<std::uint32_t> numberOf(std::string_view text) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isOne = error == std::errc() && end == text.data() + text.size() &&
                       number <= static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max());
    return isOne ? std::optional(number) : std::nullopt;
}

std::optional<Bounds> rangeOf(std::string_view text) {
    const std::size_t dots = text.find("..");
    const std::string_view last = text::trimmed(dots != std::string_view::npos ? text.substr(dots + 2) : text);
    Bounds bounds;
    if (last != "n" && last != "N" && last != "*") {
        bounds.upper = numberOf(last);
        if (!bounds.upper) {
            return std::nullopt;
        }
        bounds.lower = *bounds.upper;
    }
    if (dots != std::string_view::npos) {
        const std::optional<std::uint32_t> lower = numberOf(text::trimmed(text.substr(0, dots)));
        if (!lower || (bounds.upper && *lower > *bounds.upper)) {
            return std::nullopt;
        }
        bounds.lower = *lower;
    }
    return bounds;
}

} // namespace

std::optional<std::size_t> wholeOf(const KelAssociation& association) {
    const auto roles = association.associationRoles();
    std::size_t index = 0;
    for (const KelAssociationRole* role : roles) {
        if (role->isAggregate) {
            return index;
        }
        ++index;
    }
    return association.isAggregation && index == 2 ? std::optional<std::size_t>(0) : std::nullopt;
}

Aggregation aggregationOf(const KelAssociation& association, std::size_t index) {
    const std::optional<std::size_t> whole = wholeOf(association);
    if (!whole || *whole == index) {
        return Aggregation::none;
    }
    std::size_t at = 0;
    for (const KelAssociationRole* role : association.associationRoles()) {
        if (at++ == index) {
            return role->containment == byValue ? Aggregation::composite : Aggregation::shared;
        }
    }
    return Aggregation::none;
}

std::optional<Bounds> boundsOf(std::string_view multiplicity) {
    std::optional<Bounds> all;
    for (std::size_t at = 0; at <= multiplicity.size();) {
        const std::size_t comma = std::min(multiplicity.find(',', at), multiplicity.size());
        const std::optional<Bounds> one = rangeOf(text::trimmed(multiplicity.substr(at, comma - at)));
        if (!one) {
            return std::nullopt;
        }
        if (!all) {
            all = one;
        } else {
            all->lower = std::min(all->lower, one->lower);
            all->upper = all->upper && one->upper ? std::optional(std::max(*all->upper, *one->upper)) : std::nullopt;
            all->isExact = false;
        }
        at = comma + 1;
    }
    return all;
}

std::vector<Inheritance> inheritancesOf(const KelGeneralization& generalization) {
    std::vector<Inheritance> pairs;
    for (const KelClass* subtype : generalization.subtypeClasses()) {
        for (const KelClass* supertype : generalization.supertypeClasses()) {
            if (subtype != supertype) {
                pairs.push_back({subtype, supertype, &generalization});
            }
        }
    }
    return pairs;
}

} // namespace exporter
