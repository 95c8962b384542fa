// Whatever a file holds, its import ends, leaves a sound repository or an empty one, and leaks nothing.

#include "ImportInput.h"
#include "require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    ImportedModel imported = fuzz::ImportInput(bytes, size).import();
    fuzz::requireNone(fuzz::endFault(imported.failure, imported.model));
    fuzz::requireNone(fuzz::emptyingFault(imported.model));
    return 0;
}
