#include "petal/info/roseReleases.h"

#include <algorithm>
#include <array>

namespace petal {

namespace {

struct Release {
    std::int64_t version;
    const char* name;
};

constexpr auto releases = std::to_array<Release>({
    {37, "3.0"},
    {40, "4.0"},
    {42, "98/98i"},
    {43, "98i SP1"},
    {44, "2000e"},
    {45, "2001a/2002"},
    {46, "2002.05.20"},
    {47, "2003.06.00"},
    {48, "2003.06.01"},
    {50, "2003.06.12 and later"},
});

} // namespace

const char* roseRelease(std::int64_t version) {
    const auto* found = std::ranges::find(releases, version, &Release::version);
    return found != releases.end() ? found->name : nullptr;
}

} // namespace petal
