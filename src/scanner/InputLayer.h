#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace rose {

/// The conditions that end the whole process. None of them is reported to the host.
enum class FatalCondition : std::uint8_t {
    readFailed,
    bufferCannotGrow,
    bufferCannotBeAllocated,
    noRoomToPushBack,
    noActionFound,
    endOfBufferMissed,
};

/// Writes the condition's message and a newline to the standard error stream and exits with status 2.
[[noreturn]] void stopProcess(FatalCondition condition);

/// The stream that the scanner reads. Set by `RoseLexImport`; neither rewound nor closed here.
extern std::FILE* yyin;
/// The current match, NUL-terminated while an action runs and valid until it returns. Moves when the buffer does.
extern char* yytext;
/// The length of the current match in bytes, at least 1.
extern std::size_t yyleng;

/// The next byte of the input, 0 to 255, which is thereby consumed; -1 at the end of the input.
int yyinput();
/// Puts `character` before the current input position: the next `yyinput` or the next match starts with it.
/// `matchStart` is the start of the current match (`yytext`), which follows when the buffered text has to move.
void yyunput(int character, char* matchStart);

/// A place in the input: bytes since the scan began. It stays valid when the buffered text moves.
using Position = std::int64_t;

/// The buffered window on the stream `yyin`: the text that is still needed, and text read ahead.
///
/// The text lies between two margins, so that bytes just outside it can be loaded; those directly after it are NUL.
/// The first `refill` allocates the buffer; it doubles when the text that is still needed fills it, and is kept for the
/// next scan, for as long as the library is loaded. Failures end the process (`FatalCondition`).
///
/// Pointers into the text stay valid until the next call that may read or put back: `refill`, `fill`, `get`, `unget`.
class InputLayer {
public:
    /// Room for loads before and after the text.
    static constexpr std::size_t frontMargin = 32;
    static constexpr std::size_t backMargin = 96;

    constexpr InputLayer() = default;
    InputLayer(const InputLayer&) = delete;
    InputLayer& operator=(const InputLayer&) = delete;
    /// When the library is unloaded, or the process ends.
    ~InputLayer() { std::free(buffer_); }

    /// Forgets the buffered text, the current match and the end of the input: the next byte is read from `yyin`.
    void startOver();

    /// The first byte that no match and no `get` has consumed.
    [[nodiscard]] char* cursor() const { return cursor_; }
    /// Where the buffered text ends.
    [[nodiscard]] char* limit() const { return limit_; }
    /// Whether all that is left of the stream is buffered.
    [[nodiscard]] bool ended() const { return ended_; }

    [[nodiscard]] Position positionOf(const char* place) const { return origin_ + (place - text_); }
    [[nodiscard]] char* at(Position position) const { return text_ + (position - origin_); }

    /// Consumes the text up to `place`.
    void moveCursor(char* place) { cursor_ = place; }

    /// Reads more after the buffered text; false at the end of the input. Drops the text before `keep`. Reads about as
    /// much as was kept, so that starting a search again after each refill costs a small multiple of the text.
    /// Between `beginMatch` and `endMatch` call `fill` instead.
    bool refill(const char* keep);

    /// Makes [`begin`, `end`) the current match, NUL-terminated, and `end` the cursor.
    void beginMatch(char* begin, char* end) {
        yytext = begin;
        yyleng = static_cast<std::size_t>(end - begin);
        cursor_ = end;
        matchEnd_ = end;
        coverByteAfterMatch();
    }
    /// Ends the current match, if there is one.
    void endMatch() {
        uncoverByteAfterMatch();
        matchEnd_ = nullptr;
    }

    /// Makes sure that a byte is left to consume; false at the end of the input. The current match stays as it is.
    bool fill();
    /// The bytes that are left of the buffered text. PRECONDITION: something was consumed since the current match
    /// began, whose NUL covers the first byte after it.
    [[nodiscard]] std::string_view unread() const { return {cursor_, static_cast<std::size_t>(limit_ - cursor_)}; }
    /// As `yyinput`; the current match stays as it is.
    int get();
    /// As `yyunput`; returns by how many bytes the buffered text moved.
    std::ptrdiff_t unget(char character);
    /// Whether `unget`, since the last `takeRewritten`, has changed the text or put back a part of the current match.
    [[nodiscard]] bool isRewritten() const { return rewritten_; }
    bool takeRewritten() { return std::exchange(rewritten_, false); }

    /// Settings of tests for a scan: the sizes of a new buffer and of one read, and the allocator.
    struct TestSettings {
        std::size_t bufferSize = 16384;
        std::size_t readSize = 8192;
        void* (*reallocate)(void*, std::size_t) = std::realloc;
    };
    /// Frees the buffer, so that the next scan starts with one made to these settings.
    void TESTING_ONLY_rebuild(const TestSettings& settings);

private:
    void coverByteAfterMatch() {
        if (matchEnd_ != nullptr) {
            afterMatch_ = *matchEnd_;
            *matchEnd_ = 0;
        }
    }
    void uncoverByteAfterMatch() {
        if (matchEnd_ != nullptr) {
            *matchEnd_ = afterMatch_;
        }
    }
    void allocate();
    void grow();
    std::ptrdiff_t moveTextTo(std::size_t offset);
    std::ptrdiff_t moveTextToEnd();
    std::size_t nextReadSize();
    std::size_t read(char* target, std::size_t size);

    char* buffer_ = nullptr; // frontMargin, capacity_, backMargin bytes
    char* text_ = nullptr;   // buffer_ + frontMargin
    std::size_t capacity_ = 0;
    Position origin_ = 0;   // the position of text_[0]
    char* begin_ = nullptr; // the first buffered byte
    char* cursor_ = nullptr;
    char* limit_ = nullptr;
    char* matchEnd_ = nullptr; // the end of the current match, which starts at yytext; null without one
    char afterMatch_ = 0;      // the byte that the match's NUL covers
    bool ended_ = false;
    bool rewritten_ = false;
    bool firstRead_ = true; // of a scan
    TestSettings settings_{};
};

/// The scanner's only input, one in the process, without a lock.
extern InputLayer scannerInput;

} // namespace rose
