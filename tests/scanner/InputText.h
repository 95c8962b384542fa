#pragma once

#include "scanner/InputLayer.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace rose::test {

/// Makes `text` the scanner's whole input, behind a new buffer, for as long as it lives.
class InputText {
public:
    explicit InputText(std::string_view text, const InputLayer::TestSettings& settings = {})
        : stream_(std::tmpfile(), &std::fclose) {
        std::fwrite(text.data(), 1, text.size(), stream_.get());
        std::rewind(stream_.get());
        scannerInput.TESTING_ONLY_rebuild(settings);
        yyin = stream_.get();
    }
    ~InputText() {
        scannerInput.TESTING_ONLY_rebuild({});
        yyin = nullptr;
    }
    InputText(const InputText&) = delete;
    InputText& operator=(const InputText&) = delete;

    /// What is left of the input, which is consumed.
    static std::string rest() {
        std::string text;
        for (int byte = yyinput(); byte >= 0; byte = yyinput()) {
            text += static_cast<char>(byte);
        }
        return text;
    }

private:
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream_;
};

} // namespace rose::test
