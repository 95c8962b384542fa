#include "MatchEvent.h"
#include "scanner/RuleTable.h"

#include <random>

namespace rose::test {

namespace {

class Writer {
public:
    explicit Writer(std::uint32_t seed) : random_(seed) {}

    std::string write() {
        for (std::uint32_t count = below(40); count > 0; --count) {
            piece();
        }
        return std::move(text_);
    }

private:
    std::uint32_t below(std::uint32_t bound) { return static_cast<std::uint32_t>(random_() % bound); }

    template <class Choices>
    const auto& oneOf(const Choices& choices) {
        return choices[below(static_cast<std::uint32_t>(std::size(choices)))];
    }

    void repeat(std::string_view choices, std::uint32_t count) {
        for (; count > 0; --count) {
            text_ += oneOf(choices);
        }
    }

    void literal() {
        const Pattern& pattern = oneOf(patterns);
        std::string literal(pattern.literal.first);
        if (!pattern.literal.second.empty()) {
            literal.append(below(4), ' ').append(pattern.literal.second);
        }
        switch (below(8)) {
        case 0:
            literal.resize(below(static_cast<std::uint32_t>(literal.size())));
            break;
        case 1:
            literal.erase(0, below(static_cast<std::uint32_t>(literal.size())));
            break;
        case 2:
            literal[below(static_cast<std::uint32_t>(literal.size()))] ^= static_cast<char>(1 << below(8));
            break;
        default:
            break;
        }
        repeat(" \t", below(4));
        text_ += literal;
        repeat(" \t", below(4));
    }

    void piece() {
        static constexpr std::string_view snippets[] = {"\"",
                                                        "\"",
                                                        "\"",
                                                        "\n",
                                                        "\n",
                                                        ")",
                                                        "@12",
                                                        "\n|",
                                                        "|",
                                                        "\xE4",
                                                        "TRUE",
                                                        "PDL",
                                                        "(object ",
                                                        "object Class",
                                                        "label",
                                                        "quidu",
                                                        " \"a\" \"b",
                                                        "\" \"c\" @3\n",
                                                        "\n|type \"q\"\n|\n"};
        static constexpr std::string_view longRuns[] = {" ", " \t", "x", "\n", "|"};
        switch (below(16)) {
        case 0:
            text_.append(1, '\0');
            break;
        case 1:
            text_ += static_cast<char>(below(256));
            break;
        case 2:
            repeat(" \t", below(8));
            break;
        case 3: // past the sizes of blocks and buffers
            if (below(16) == 0) {
                repeat(oneOf(longRuns), below(20000));
            }
            break;
        case 4:
        case 5:
        case 6:
        case 7:
            text_ += oneOf(snippets);
            break;
        default:
            literal();
        }
    }

    std::mt19937 random_;
    std::string text_;
};

} // namespace

std::string randomText(std::uint32_t seed) {
    return Writer(seed).write();
}

} // namespace rose::test
