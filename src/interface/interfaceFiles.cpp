#include "interface/interfaceFiles.h"

#include <array>

namespace petal {

std::span<const InterfaceFile> interfaceFiles() {
    static constexpr std::array files{
        InterfaceFile{"completions/petal.bash", bashCompletion},
        InterfaceFile{"completions/_petal", zshCompletion},
        InterfaceFile{"completions/petal.fish", fishCompletion},
        InterfaceFile{"docs/man/petal.1", manualPage},
    };
    return files;
}

} // namespace petal
