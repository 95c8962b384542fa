#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace units {

/// The folders that the path symbols in the file names of controlled units mean.
///
/// A symbol is searched first among the mapped ones, ignoring case, and then among the environment variables, as
/// written.
class PathSymbols {
public:
    /// Maps the symbol, with or without its "$", to a folder. The last mapping counts.
    void map(std::string_view symbol, std::filesystem::path folder);
    /// Whether the symbol, without "$", was mapped.
    [[nodiscard]] bool isMapped(std::string_view symbol) const;
    /// The folder of the symbol, without "$".
    [[nodiscard]] std::optional<std::filesystem::path> find(const std::string& symbol) const;

private:
    std::map<std::string, std::filesystem::path> folders_; // by the symbol in lower case
};

} // namespace units
