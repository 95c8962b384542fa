#include "petal/headerCharSet.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <memory>
#include <sys/stat.h>

namespace petal {

namespace {

constexpr std::string_view headerStart = "(object Petal";

bool isWordByte(char byte) {
    return byte == '_' || byte == '-' || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= 'a' && byte <= 'z');
}

/// Takes the first token: a quoted text, a word, or a single byte. Blanks in front are dropped.
std::string_view takeToken(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    std::size_t length = std::min<std::size_t>(text.size(), 1);
    if (text.starts_with('"')) {
        while (length < text.size() && text[length] != '"') {
            length += text[length] == '\\' ? 2 : 1;
        }
        length = std::min(length + 1, text.size());
    } else if (!text.empty() && isWordByte(text.front())) {
        length = static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isWordByte) - text.begin());
    }
    const std::string_view token = text.substr(0, length);
    text.remove_prefix(length);
    return token;
}

std::optional<int> number(std::string_view token) {
    int value = 0;
    const auto [stop, error] = std::from_chars(token.data(), token.data() + token.size(), value);
    const bool isNumber = error == std::errc() && stop == token.data() + token.size();
    return isNumber ? std::optional(value) : std::nullopt;
}

} // namespace

std::string readHead(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return {};
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "re"), std::fclose);
    if (file == nullptr) {
        return {};
    }
    std::string head(headLength, '\0');
    head.resize(std::fread(head.data(), 1, head.size(), file.get()));
    return head;
}

bool isModelHead(std::string_view head) {
    constexpr std::size_t looksAt = 20; // as the bridge does
    return head.substr(0, looksAt).find(headerStart) != std::string_view::npos;
}

std::optional<int> headerCharSet(std::string_view head) {
    const std::size_t start = head.find(headerStart);
    if (start == std::string_view::npos) {
        return std::nullopt;
    }
    head.remove_prefix(start + headerStart.size());
    std::optional<int> charSet;
    for (int depth = 1; !head.empty();) {
        const std::string_view token = takeToken(head);
        if (token == "(") {
            ++depth;
        } else if (token == ")" && --depth == 0) {
            return charSet;
        } else if (token == "charSet" && depth == 1) {
            charSet = number(takeToken(head));
        }
    }
    return std::nullopt;
}

} // namespace petal
