// Compiled once for every set of vector instructions: foreach_target.h includes this file again for each.

#include "scanner/VectorCode.h"

#include <vector>

// Nothing here uses the instructions that each of these adds to the set below it.
#define HWY_DISABLED_TARGETS (HWY_SSE4 | HWY_AVX3_DL)
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "scanner/VectorCode.cpp"
#include <hwy/foreach_target.h>
// The code below is compiled for each set, so it must come after foreach_target.h.
#include "scanner/Growth-inl.h"
#include "scanner/Places-inl.h"

#if HWY_ONCE
namespace rose {

namespace {

/// The code that the processor can run. The library's own choice at run time is not used: linking it costs 3 ms
/// whenever the plug-in is loaded.
std::vector<VectorCode> runnableCodes() {
    std::vector<VectorCode> codes;
#if HWY_ARCH_X86
    const bool avx2 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
                      __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("fma");
#if HWY_TARGETS & HWY_AVX3
    if (avx2 && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
        __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
        __builtin_cpu_supports("avx512cd")) {
        codes.push_back({"AVX-512", N_AVX3::findPlaces, N_AVX3::growMatches});
    }
#endif
#if HWY_TARGETS & HWY_AVX2
    if (avx2) {
        codes.push_back({"AVX2", N_AVX2::findPlaces, N_AVX2::growMatches});
    }
#endif
#if HWY_TARGETS & HWY_SSSE3
    if (__builtin_cpu_supports("ssse3")) {
        codes.push_back({"SSSE3", N_SSSE3::findPlaces, N_SSSE3::growMatches});
    }
#endif
#endif
    // Any processor of the target runs this.
    codes.push_back({"baseline", HWY_STATIC_DISPATCH(findPlaces), HWY_STATIC_DISPATCH(growMatches)});
    return codes;
}

} // namespace

std::span<const VectorCode> vectorCodes() {
    static const std::vector<VectorCode> codes = runnableCodes();
    return codes;
}

} // namespace rose
#endif
