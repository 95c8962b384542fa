#include "export/Omissions.h"

#include <algorithm>
#include <numeric>

namespace exporter {

void Omissions::add(const Omission& omission, std::uint64_t count) {
    if (count == 0) {
        return;
    }
    const auto same = std::ranges::find_if(counts_, [&](const Count& row) {
        return row.omission.one == omission.one && row.omission.why == omission.why;
    });
    if (same != counts_.end()) {
        same->count += count;
    } else {
        counts_.push_back({omission, count});
    }
}

std::uint64_t Omissions::getTotal() const {
    return std::accumulate(counts_.begin(), counts_.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const Count& row) { return sum + row.count; });
}

std::string Omissions::summary() const {
    std::vector<Count> byKind;
    for (const Count& row : counts_) {
        const auto same =
            std::ranges::find(byKind, row.omission.one, [](const Count& kind) { return kind.omission.one; });
        if (same != byKind.end()) {
            same->count += row.count;
        } else {
            byKind.push_back(row);
        }
    }
    std::string text;
    for (const Count& kind : byKind) {
        text += (text.empty() ? "" : ", ") + std::to_string(kind.count) + " ";
        text += kind.count == 1 ? kind.omission.one : kind.omission.many;
    }
    return text;
}

} // namespace exporter
