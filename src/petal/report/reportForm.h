#pragma once

#include "petal/report/Report.h"

#include <array>
#include <cstdint>
#include <string>

namespace petal {

constexpr const char* reportFormat = "petal-report";
constexpr std::int64_t reportVersion = 1;

/// The optional members of a file in a report, in the order of the tables below. Empty and 0 are omitted.
struct TextMember {
    const char* name;
    std::string FileReport::*text;
};
struct CountMember {
    const char* name;
    std::uint64_t ImportResult::*count;
};
struct StatusMember {
    const char* name;
    int FileReport::*number;
};

constexpr std::array textMembers{
    TextMember{"ledger", &FileReport::ledger},
    TextMember{"reason", &FileReport::reason},
    TextMember{"text", &FileReport::text},
};
constexpr std::array statusMembers{
    StatusMember{"exitStatus", &FileReport::exitStatus},
    StatusMember{"signal", &FileReport::signal},
};
constexpr std::array countMembers{
    CountMember{"objects", &ImportResult::objects},
    CountMember{"dropped", &ImportResult::dropped},
    CountMember{"losses", &ImportResult::losses},
    CountMember{"unitsFound", &ImportResult::unitsFound},
    CountMember{"unitsMissing", &ImportResult::unitsMissing},
    CountMember{"omitted", &ImportResult::omitted},
};

} // namespace petal
