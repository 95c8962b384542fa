#include "petal/import/PlugIn.h"

#include "loading/part.h"
#include "petal/Failure.h"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <string>

namespace petal {

namespace {

std::filesystem::path libraryPath() {
    const char* given = std::getenv(PlugIn::pathVariable);
    if (given != nullptr && *given != '\0') {
        return std::filesystem::absolute(given); // a bare name would be searched for elsewhere
    }
    return loading::libraryFolder() / KelImportBridge::libraryName;
}

[[noreturn]] void fail(const std::string& reason) {
    throw Failure(Outcome::bridgeNotLoaded, "the bridge cannot be loaded: " + reason,
                  std::string("Set the environment variable ") + PlugIn::pathVariable + " to the path of " +
                      KelImportBridge::libraryName + ", or install it in the folder lib next to petal's bin.");
}

} // namespace

PlugIn PlugIn::load() {
    void* library = dlopen(libraryPath().c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        fail(dlerror());
    }
    void* factory = dlsym(library, KelImportBridge::factoryName);
    if (factory == nullptr) {
        fail(dlerror());
    }
    return PlugIn(KelImportBridge::interfaceOf(factory));
}

} // namespace petal
