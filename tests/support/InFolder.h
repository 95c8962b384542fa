#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

/// A test in an empty folder of its own.
class InFolder : public testing::Test {
public:
    ~InFolder() override { std::filesystem::remove_all(folder); }

protected:
    InFolder() {
        std::string pattern = testing::TempDir() + "petalXXXXXX";
        folder = ::mkdtemp(pattern.data());
    }

    [[nodiscard]] std::string pathOf(std::string_view name) const { return folder / name; }

    std::string put(std::string_view name, std::string_view contents) const {
        std::filesystem::create_directories(std::filesystem::path(pathOf(name)).parent_path());
        std::ofstream(pathOf(name), std::ios::binary) << contents;
        return pathOf(name);
    }

    std::filesystem::path folder;
};
