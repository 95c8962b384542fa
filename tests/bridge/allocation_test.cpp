// An import while memory runs out: it fails as every import does, and leaves nothing behind.

#include "bridge/KelIbmRationalRose40ImportDllInterface.h"
#include "host/log/KelException.h"
#include "host/options/KelOptionList.h"
#include "support/ImportedModel.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

constexpr long unlimited = -1;
thread_local long allocationsLeft = unlimited; // before the one that fails

} // namespace

// Not inlined, so that the compiler does not see a malloc where it expects a new.
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (allocationsLeft >= 0 && allocationsLeft-- == 0) {
        throw std::bad_alloc();
    }
    void* memory = std::malloc(size);
    return memory != nullptr ? memory : throw std::bad_alloc();
}

[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return std::malloc(size);
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    std::free(memory);
}

namespace {

class SilentLog final : public KelLog {
public:
    void record(const KelLogEvent& /*event*/) override {}
};

TEST(AllocationTest, WhicheverAllocationFailsTheModelIsEmptyAndTheNextImportUnharmed) {
    constexpr const char* path = PETAL_EXAMPLES "/everything.mdl";
    const std::string whole = ImportedModel::ofFile(path).json();
    KelIbmRationalRose40ImportDllInterface bridge;
    int failures = 0;
    for (bool hasFailed = true; hasFailed;) {
        KelOptionList options;
        bridge.getOptionList(options);
        options.setValue("File", path);
        KelModel model;
        SilentLog log;
        hasFailed = false;
        allocationsLeft = failures;
        try {
            bridge.run("bridge-under-test", model, options, log);
        } catch (const KelException&) {
            hasFailed = true;
        }
        allocationsLeft = unlimited;
        EXPECT_EQ(model.childPackages().isEmpty(), hasFailed);
        EXPECT_EQ(model.types().isEmpty(), hasFailed);
        failures += static_cast<int>(hasFailed);
    }
    EXPECT_GT(failures, 300);
    EXPECT_EQ(ImportedModel::ofFile(path).json(), whole);
}

} // namespace
