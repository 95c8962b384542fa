#include "MemoryFolder.h"

#include "require.h"

#include <cstdlib>
#include <fstream>
#include <unistd.h>

namespace fuzz {

namespace fs = std::filesystem;

namespace {

constexpr const char* inMemory = "/dev/shm";

} // namespace

MemoryFolder::MemoryFolder() {
    const fs::path parent = ::access(inMemory, W_OK) == 0 ? fs::path(inMemory) : fs::temp_directory_path();
    std::string pattern = parent / "petal-fuzz-XXXXXX";
    require(::mkdtemp(pattern.data()) != nullptr, "the system gives no folder");
    path_ = pattern;
}

MemoryFolder::~MemoryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void MemoryFolder::put(std::string_view name, std::string_view bytes) const {
    const fs::path path = path_ / name;
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
    require(file.good(), "the folder takes no more");
}

void MemoryFolder::clear() const {
    for (const fs::directory_entry& entry : fs::directory_iterator(path_)) {
        fs::remove_all(entry.path());
    }
}

} // namespace fuzz
