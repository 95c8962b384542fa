#pragma once

#include <span>
#include <string>

namespace petal {

/// A file that tells of the command line, made from its description.
struct InterfaceFile {
    const char* path; // below the folder of the sources
    std::string (*text)();
};

[[nodiscard]] std::span<const InterfaceFile> interfaceFiles();

/// Their texts.
[[nodiscard]] std::string bashCompletion();
[[nodiscard]] std::string zshCompletion();
[[nodiscard]] std::string fishCompletion();
[[nodiscard]] std::string manualPage();

} // namespace petal
