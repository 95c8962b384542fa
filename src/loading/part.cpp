#include "loading/part.h"

#include <dlfcn.h>

namespace loading {

std::filesystem::path libraryFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path() / "lib";
}

const void* loadPart(const char* name) {
    const std::filesystem::path path = libraryFolder() / "petal" / (std::string(name) + ".so");
    const std::string start = "the part '" + std::string(name) + "' of petal cannot be loaded: ";
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* function = library != nullptr ? dlsym(library, "petalPart") : nullptr;
    if (function == nullptr) {
        throw NotLoaded(start + dlerror());
    }
    const void* interface = reinterpret_cast<decltype(&petalPart)>(function)(version);
    if (interface == nullptr) {
        throw NotLoaded(start + path.string() + " is of another version of petal");
    }
    return interface;
}

} // namespace loading
