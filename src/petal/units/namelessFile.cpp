#include "petal/units/namelessFile.h"

#include "petal/writeFully.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace petal {

namespace {

constexpr mode_t ownerOnly = 0600;

} // namespace

int openNamelessFile() {
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    int descriptor = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, ownerOnly);
    if (descriptor < 0) { // not every file system has such files
        std::string path = folder / "petalXXXXXX";
        descriptor = ::mkostemp(path.data(), O_CLOEXEC);
        if (descriptor < 0) {
            throwErrno();
        }
        ::unlink(path.c_str());
    }
    return descriptor;
}

} // namespace petal
