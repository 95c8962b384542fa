#include "catalog/searchWords.h"

#include "text/utf8.h"

#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include <unordered_set>
#include <vector>

namespace catalog {

namespace {

/// A character within its text.
struct Character {
    enum class Kind : unsigned char { other, small, capital, digit, dense };
    Kind kind = Kind::other;
    std::size_t begin = 0;
    std::size_t end = 0;
};

constexpr int firstBeyondAscii = 0x80;
constexpr std::size_t longestRun = 3; // of characters of a dense script that become a word

/// Whether the character is of a script that is written without blanks between words.
bool isDense(int code) {
    UErrorCode error = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(code, &error);
    return script == USCRIPT_HAN || script == USCRIPT_HIRAGANA || script == USCRIPT_KATAKANA ||
           script == USCRIPT_HANGUL || script == USCRIPT_THAI;
}

Character::Kind kindOf(int code) {
    using enum Character::Kind;
    if (code < firstBeyondAscii) {
        return code >= 'a' && code <= 'z'   ? small
               : code >= 'A' && code <= 'Z' ? capital
               : code >= '0' && code <= '9' ? digit
                                            : other;
    }
    if (u_isalpha(code) == 0 && u_isdigit(code) == 0 && u_charType(code) != U_NON_SPACING_MARK) {
        return other;
    }
    return isDense(code) ? dense : u_isupper(code) != 0 ? capital : u_isdigit(code) != 0 ? digit : small;
}

class Splitter {
public:
    void add(std::string_view text) {
        text_ = text;
        for (std::size_t at = 0; at < text.size();) {
            Character next{.begin = at};
            const int code = text::nextCharacter(text, at);
            next.kind = code < 0 ? Character::Kind::other : kindOf(code);
            next.end = at;
            if (next.kind == Character::Kind::other) {
                endToken();
            } else {
                token_.push_back(next);
            }
        }
        endToken();
    }

    [[nodiscard]] std::string take() { return std::move(words_); }

private:
    using Kind = Character::Kind;

    /// Whether a word ends before this character of the token.
    [[nodiscard]] bool isBorder(std::size_t index) const {
        const Kind before = token_[index - 1].kind;
        const Kind here = token_[index].kind;
        if ((before == Kind::dense) != (here == Kind::dense)) {
            return true;
        }
        if (here != Kind::capital) {
            return false;
        }
        const bool isLastOfSeveral = index + 1 < token_.size() && token_[index + 1].kind == Kind::small;
        return before != Kind::capital || isLastOfSeveral;
    }

    void endToken() {
        std::size_t begin = 0;
        for (std::size_t index = 1; index <= token_.size(); ++index) {
            if (index < token_.size() && !isBorder(index)) {
                continue;
            }
            if (token_[begin].kind == Kind::dense) {
                addRuns(begin, index);
            } else if (begin > 0 || index < token_.size()) {
                addWord(begin, index);
            }
            begin = index;
        }
        token_.clear();
    }

    void addRuns(std::size_t begin, std::size_t end) {
        for (std::size_t length = 1; length <= longestRun; ++length) {
            for (std::size_t first = begin; first + length <= end; ++first) {
                addWord(first, first + length);
            }
        }
    }

    void addWord(std::size_t begin, std::size_t end) {
        const std::string_view word = text_.substr(token_[begin].begin, token_[end - 1].end - token_[begin].begin);
        if (known_.insert(word).second) {
            words_.append(words_.empty() ? "" : " ").append(word);
        }
    }

    std::string_view text_;
    std::vector<Character> token_; // a run of letters and digits
    std::unordered_set<std::string_view> known_;
    std::string words_;
};

} // namespace

std::string searchWords(std::string_view name, std::string_view documentation) {
    Splitter splitter;
    splitter.add(name);
    splitter.add(documentation);
    return splitter.take();
}

} // namespace catalog
