#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

/// A test in an empty folder of its own, which goes with the test.
class InFolder : public testing::Test {
public:
    ~InFolder() override { std::filesystem::remove_all(folder); }

protected:
    using Names = std::set<std::string>;

    InFolder() {
        std::string pattern = testing::TempDir() + "petalXXXXXX";
        folder = ::mkdtemp(pattern.data());
    }

    [[nodiscard]] std::string pathOf(std::string_view name) const { return folder / name; }

    /// Makes a file and the folders that it is in.
    std::string put(std::string_view name, std::string_view contents) const {
        std::filesystem::create_directories(std::filesystem::path(pathOf(name)).parent_path());
        std::ofstream(pathOf(name), std::ios::binary) << contents;
        given.emplace(name);
        return pathOf(name);
    }
    /// The contents of a file; "(none)" when it does not exist.
    [[nodiscard]] std::string get(std::string_view name) const {
        const std::ifstream file(pathOf(name), std::ios::binary);
        std::ostringstream contents;
        contents << file.rdbuf();
        return file ? contents.str() : "(none)";
    }
    /// The paths of all files in a folder of the test's and below, from that folder on; folders left out.
    [[nodiscard]] Names files(std::string_view name = "") const {
        Names paths;
        if (std::filesystem::exists(pathOf(name))) {
            for (const auto& entry : std::filesystem::recursive_directory_iterator(pathOf(name))) {
                std::error_code none; // links may lead nowhere
                if (!entry.is_directory(none)) {
                    paths.insert(entry.path().lexically_relative(pathOf(name)));
                }
            }
        }
        return paths;
    }

    std::filesystem::path folder;
    mutable Names given; // the files that the test has put there itself
};
