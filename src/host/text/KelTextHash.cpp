#include "host/text/KelTextHash.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <chrono>
#include <cstdint>
#include <unistd.h>

namespace {

/// A random number; without the system's randomness, a number that at least differs between processes.
XXH64_hash_t drawKey() noexcept {
    XXH64_hash_t key = 0;
    if (::getentropy(&key, sizeof key) != 0) {
        key = static_cast<XXH64_hash_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^
              reinterpret_cast<std::uintptr_t>(&key);
    }
    return key;
}

const XXH64_hash_t key = drawKey();

} // namespace

std::size_t KelTextHash::operator()(std::string_view text) const noexcept {
    return XXH3_64bits_withSeed(text.data(), text.size(), key);
}
