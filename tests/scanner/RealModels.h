#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace rose::test {

inline constexpr const char* noRealModels = "no real models: PETAL_REAL_MODELS names no folder that holds any";

/// The model files in the folder that the build was told of; none without it.
inline std::vector<std::filesystem::path> realModels() {
    std::vector<std::filesystem::path> models;
    const std::filesystem::path folder = PETAL_REAL_MODELS;
    if (!std::filesystem::is_directory(folder)) {
        return models;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".mdl" || entry.path().extension() == ".cat") {
            models.push_back(entry.path());
        }
    }
    return models;
}

inline std::string contents(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

} // namespace rose::test
