#include "petal/fileOption.h"

#include "host/encoding/localeText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

namespace {

/// Puts the process into a locale for as long as it lives.
class InLocale {
public:
    explicit InLocale(const char* name) : before_(std::setlocale(LC_CTYPE, nullptr)) {
        isSet = std::setlocale(LC_CTYPE, name) != nullptr;
    }
    ~InLocale() { std::setlocale(LC_CTYPE, before_.c_str()); }

    bool isSet = false;

private:
    std::string before_;
};

// Whatever the locale, and whether or not the name is in its encoding, the bridge gets back the very bytes.
TEST(FileOption, LeadsToTheVeryBytes) {
    int checks = 0;
    for (const char* locale : {"C", "C.UTF-8", "en_US.ISO-8859-1", "zh_CN.GBK", "ja_JP.EUC-JP"}) {
        for (const char* path : {"/a/b.mdl", "caf\xC3\xA9", "caf\xE9", "\xE4\xB8\xAD\xE6\x96\x87.mdl", "\xD6\xD0",
                                 "\xEF\xBB\xBFmark", "\x81", "\xE4\xB8\xAD\x80"}) {
            const InLocale scope(locale);
            if (!scope.isSet) {
                continue; // not every system has every locale; the first two are always there
            }
            ++checks;
            EXPECT_EQ(utf8ToLocale(petal::fileOption(path).text()).view(), path) << locale;
        }
    }
    EXPECT_GE(checks, 16) << "two locales";
}

} // namespace
