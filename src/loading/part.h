#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

/// Parts: shared libraries of petal's own, with the rooms that few commands or formats need. A program that does not
/// ask for a part does not load it, nor the libraries that only that part uses.
///
/// A part NAME is the file "petal/NAME.so" in `libraryFolder()`. `add_part` (src/CMakeLists.txt) makes it of static
/// libraries, each of which it has by itself: parts and program share the code and the state of libkel only. It
/// exports one function, `petalPart`, which returns the address of a constant structure: the part's interface. That has
/// a member `static constexpr const char* name`, NAME, and functions. They may throw through the interface.
namespace loading {

inline constexpr const char* version = PETAL_VERSION;

class NotLoaded : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The folder "lib" next to the folder of this program. Throws `std::filesystem::filesystem_error`.
[[nodiscard]] std::filesystem::path libraryFolder();

/// The interface of a part of that name, which is loaded when it is first asked for and never unloaded. Throws
/// `NotLoaded` for a part that is missing, cannot be loaded, or is of another version of petal. Any thread may call it.
[[nodiscard]] const void* loadPart(const char* name);

template <class Interface>
[[nodiscard]] const Interface& part() {
    return *static_cast<const Interface*>(loadPart(Interface::name));
}

/// What `petalPart` returns to a program of the version `asked`.
[[nodiscard]] constexpr const void* partFor(std::string_view asked, const void* interface) {
    return asked == version ? interface : nullptr;
}

} // namespace loading

/// Defined by each part, and by nothing else. Returns null to a program of another version.
extern "C" [[gnu::visibility("default")]] const void* petalPart(const char* version);
