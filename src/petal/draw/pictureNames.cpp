#include "petal/draw/pictureNames.h"

#include "text/utf8.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <map>

namespace petal {

namespace {

constexpr std::size_t longestPart = 200; // bytes
constexpr std::string_view refused = "/\\:*?\"<>|";

bool isRefused(int character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0xFFFD ||
           (character < 0x80 && refused.find(static_cast<char>(character)) != std::string_view::npos);
}

/// Of a character that stands in names of files, and is no dot: letters, digits and the like, as most are.
bool isPlain(char byte) {
    return byte == ' ' || byte == '-' ||
           (byte >= '0' && byte <= 'z' && byte != ':' && byte != '<' && byte != '>' && byte != '?' && byte != '\\');
}

std::string filePart(std::string_view name) {
    if (name.size() <= longestPart && !name.empty() && name.back() != ' ' && std::ranges::all_of(name, isPlain)) {
        return std::string(name);
    }
    std::string part;
    bool isStart = true;
    for (std::size_t at = 0; at < name.size();) {
        const std::size_t start = at;
        const int character = text::nextCharacter(name, at);
        const std::string_view bytes = name.substr(start, at - start);
        isStart = isStart && character == '.';
        const std::string_view put = isStart || isRefused(character) ? "_" : bytes;
        if (part.size() + put.size() > longestPart) {
            break;
        }
        part += put;
    }
    // a blank at the end is lost on some systems, as is a dot
    if (!part.empty() && (part.back() == ' ' || part.back() == '.')) {
        part.back() = '_';
    }
    return part.empty() ? "_" : part;
}

std::string folded(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (const char byte = text[at]; static_cast<unsigned char>(byte) < 0x80) {
            result += byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
            ++at;
            continue;
        }
        const std::size_t start = at;
        const int character = text::nextCharacter(text, at);
        if (character < 0) {
            result += text.substr(start, at - start);
            continue;
        }
        char bytes[U8_MAX_LENGTH]; // NOLINT(modernize-avoid-c-arrays): ICU's macro needs one
        int length = 0;
        U8_APPEND_UNSAFE(bytes, length, u_foldCase(character, U_FOLD_CASE_DEFAULT));
        result.append(bytes, static_cast<std::size_t>(length));
    }
    return result;
}

} // namespace

std::vector<std::string> pictureNames(const layout::NotationTree& tree, const std::vector<layout::NodeId>& diagrams) {
    std::vector<std::string> names;
    std::map<std::string, std::size_t> used; // how often each name was wanted, or that it is taken
    for (const layout::NodeId diagram : diagrams) {
        std::string base;
        for (const std::string& package : layout::packagesOf(tree, diagram)) {
            base += filePart(package) + "/";
        }
        base += filePart(tree[diagram].name());
        std::size_t& count = used[folded(base)];
        std::string name = base;
        while (count++ > 0) {
            name = base + " (" + std::to_string(count) + ")";
            if (used.emplace(folded(name), 1).second) {
                break;
            }
        }
        names.push_back(std::move(name));
    }
    return names;
}

std::string qualifiedName(const layout::NotationTree& tree, layout::NodeId diagram) {
    std::string name;
    for (const std::string& package : layout::packagesOf(tree, diagram)) {
        name += package + "::";
    }
    return name.append(tree[diagram].name());
}

} // namespace petal
