#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace units {

/// What the path symbols in the file names of controlled units stand for.
///
/// A symbol is first looked for among those that were mapped, in any case, and then among the environment variables,
/// as it is written.
class PathSymbols {
public:
    /// Makes the symbol, with or without its "$", stand for a folder; the last mapping counts.
    void map(std::string_view symbol, std::filesystem::path folder);
    /// Whether that was done for the symbol, without "$".
    [[nodiscard]] bool isMapped(std::string_view symbol) const;
    /// The folder that the symbol, without "$", stands for.
    [[nodiscard]] std::optional<std::filesystem::path> find(const std::string& symbol) const;

private:
    std::map<std::string, std::filesystem::path> folders_; // by the symbol in lower case
};

} // namespace units
