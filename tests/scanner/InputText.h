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
        : text_(text), stream_(::fmemopen(text_.data(), text_.size(), "r"), &std::fclose) {
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
    std::string text_;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream_;
};

} // namespace rose::test
