#include "support/keepDocument.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

void keepDocument(std::string_view text) {
    const char* folder = std::getenv("PETAL_DOCUMENTS");
    if (folder == nullptr || !(text.starts_with("{") || text.starts_with("["))) {
        return;
    }
    std::filesystem::create_directories(folder);
    const std::filesystem::path path =
        std::filesystem::path(folder) / std::to_string(std::hash<std::string_view>{}(text));
    std::ofstream(path, std::ios::binary) << text;
}
