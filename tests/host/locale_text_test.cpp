#include "host/encoding/localeText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

// Puts the process into a locale, and back into its former one.
class InLocale {
public:
    explicit InLocale(const char* name) : former_(std::setlocale(LC_CTYPE, nullptr)) {
        known_ = std::setlocale(LC_CTYPE, name) != nullptr;
    }
    InLocale(const InLocale&) = delete;
    InLocale& operator=(const InLocale&) = delete;
    ~InLocale() { std::setlocale(LC_CTYPE, former_.c_str()); }
    [[nodiscard]] bool isKnown() const { return known_; }

private:
    std::string former_;
    bool known_;
};

struct NameRow {
    const char* path;
    const char* encoding;
    const char* expected;
};

TEST(ComputeNameFromPathTest, TakesTheLastPartWithoutExtension) {
    const InLocale locale("C.UTF-8");
    ASSERT_TRUE(locale.isKnown());
    const NameRow rows[] = {
        {"a/b/Order.v2.mdl", "unknown", "Order.v2"},
        {"Order.mdl", "unknown", "Order"},
        {"Order", "unknown", "Order"},
        {".mdl", "unknown", ".mdl"},
        {"a.b/.mdl", "unknown", ".mdl"},
        {"a.b/Order", "unknown", "Order"},
        {"C:\\models\\Order.mdl", "unknown", "Order"},
        {"a\\b/c.mdl", "unknown", "c"},
        {"a/b\\c.mdl", "unknown", "c"},
        {"Order.", "unknown", "Order"},
        {"a/", "unknown", ""},
        {"", "unknown", ""},
        // Into the encoding of the model's texts.
        {"a/Caf\xC3\xA9.mdl", "windows-1252", "Caf\xE9"},
        {"a/Caf\xC3\xA9.mdl", "UTF-8", "Caf\xC3\xA9"},
        {"a/Caf\xC3\xA9.mdl", "unknown", "Caf\xC3\xA9"},
        {"a/Caf\xC3\xA9.mdl", "no-such-encoding", "Caf\xC3\xA9"},
        {"a/Caf\xC3\xA9.mdl", "", "Caf\xC3\xA9"},
        {"a/\xD0\x96\xC3\xA9.mdl", "windows-1252", "\xD0\x96\xC3\xA9"},
        {"a/Caf\xE9.mdl", "windows-1252", "Caf\xE9"},
    };
    for (const NameRow& row : rows) {
        EXPECT_EQ(computeNameFromPath(row.path, row.encoding), row.expected) << row.path << " " << row.encoding;
    }
}

TEST(Utf8ToLocaleTest, KeepsTheBytesWhereNothingCanOrNeedBeConverted) {
    for (const char* name : {"C.UTF-8", "C"}) {
        const InLocale locale(name);
        ASSERT_TRUE(locale.isKnown());
        for (const char* text : {"", "/tmp/Order.mdl", "/tmp/Caf\xC3\xA9.mdl", "/tmp/Caf\xE9.mdl"}) {
            EXPECT_EQ(utf8ToLocale(text), text) << name;
        }
    }
    EXPECT_EQ(utf8ToLocale(nullptr), "");
}

// Few machines have a locale with another encoding than UTF-8, so one is made for the test.
class Latin1Locale {
public:
    Latin1Locale() : folder_(std::filesystem::path(testing::TempDir()) / "kel_locales") {
        std::filesystem::create_directories(folder_);
        const std::string path = (folder_ / name).string();
        const std::string command = "localedef -c -i en_US -f ISO-8859-1 '" + path + "' >/dev/null 2>&1";
        wasMade_ = std::system(command.c_str()) == 0 && setenv("LOCPATH", folder_.c_str(), 1) == 0;
    }
    Latin1Locale(const Latin1Locale&) = delete;
    Latin1Locale& operator=(const Latin1Locale&) = delete;
    ~Latin1Locale() {
        unsetenv("LOCPATH");
        std::filesystem::remove_all(folder_);
    }
    [[nodiscard]] bool wasMade() const { return wasMade_; }

    static constexpr const char* name = "kel_TEST.ISO-8859-1";

private:
    std::filesystem::path folder_;
    bool wasMade_ = false;
};

TEST(Utf8ToLocaleTest, ConvertsIntoTheEncodingOfTheLocale) {
    const Latin1Locale latin1;
    if (!latin1.wasMade()) {
        GTEST_SKIP() << "no locale can be made on this machine";
    }
    const InLocale locale(Latin1Locale::name);
    ASSERT_TRUE(locale.isKnown());
    EXPECT_EQ(utf8ToLocale("/tmp/Caf\xC3\xA9"), "/tmp/Caf\xE9");
    EXPECT_EQ(utf8ToLocale("/tmp/\xD0\x96\xC3\xA9"), "/tmp/\xD0\x96\xC3\xA9");
    EXPECT_EQ(utf8ToLocale("/tmp/Caf\xE9"), "/tmp/Caf\xE9");
    EXPECT_EQ(computeNameFromPath("Caf\xE9.mdl", "macintosh"), "Caf\x8E");
    EXPECT_EQ(computeNameFromPath("Caf\xE9.mdl", "UTF-8"), "Caf\xC3\xA9");
}

} // namespace
