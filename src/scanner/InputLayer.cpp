#include "scanner/InputLayer.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace rose {

namespace {

/// In the order of `FatalCondition`.
constexpr std::array<const char*, 6> messages{
    "input in flex scanner failed",
    "fatal error - scanner input buffer overflow",
    "out of dynamic memory in yy_create_buffer()",
    "flex scanner push-back overflow",
    "fatal flex scanner internal error--no action found",
    "fatal flex scanner internal error--end of buffer missed",
};

} // namespace

void stopProcess(FatalCondition condition) {
    std::fprintf(stderr, "%s\n", messages[static_cast<std::size_t>(condition)]);
    std::exit(2);
}

std::FILE* yyin = nullptr;
char* yytext = nullptr;
std::size_t yyleng = 0;

constinit InputLayer scannerInput;

int yyinput() {
    return scannerInput.get();
}

void yyunput(int character, char* matchStart) {
    const std::ptrdiff_t moved = scannerInput.unget(static_cast<char>(character));
    yytext = matchStart + moved;
}

void InputLayer::startOver() {
    origin_ = 0;
    begin_ = cursor_ = limit_ = text_;
    matchEnd_ = nullptr;
    ended_ = rewritten_ = false;
    firstRead_ = true;
}

bool InputLayer::refill(const char* keep) {
    if (cursor_ > limit_) {
        stopProcess(FatalCondition::endOfBufferMissed);
    }
    if (ended_) {
        return false;
    }
    if (buffer_ == nullptr) {
        allocate();
    } else {
        begin_ += keep - begin_; // `keep` points into the buffer
        moveTextTo(0);
    }
    const auto kept = static_cast<std::size_t>(limit_ - begin_);
    if (kept == capacity_) {
        grow();
    }
    std::size_t held = kept;
    const std::size_t wanted = kept + std::max(kept, settings_.readSize);
    while (!ended_ && held < wanted && held < capacity_) {
        const std::size_t size = std::min(nextReadSize(), capacity_ - held);
        if (size < settings_.readSize && held > kept) {
            break; // short reads leave the stream between its blocks, where every later one costs twice as much
        }
        const std::size_t count = read(text_ + held, size);
        ended_ = count == 0;
        held += count;
    }
    limit_ = text_ + held;
    std::memset(limit_, 0, backMargin);
    return held > kept;
}

bool InputLayer::fill() {
    if (cursor_ < limit_) {
        return true;
    }
    uncoverByteAfterMatch();
    const bool found = refill(matchEnd_ != nullptr ? std::min(yytext, cursor_) : cursor_);
    coverByteAfterMatch();
    return found;
}

int InputLayer::get() {
    if (!fill()) {
        return -1;
    }
    const char byte = cursor_ == matchEnd_ ? afterMatch_ : *cursor_;
    ++cursor_;
    return static_cast<unsigned char>(byte);
}

std::ptrdiff_t InputLayer::unget(char character) {
    if (buffer_ == nullptr) {
        allocate();
    }
    uncoverByteAfterMatch();
    std::ptrdiff_t moved = 0;
    if (cursor_ == begin_) {
        moved = begin_ == text_ ? moveTextToEnd() : 0;
        --begin_;
        rewritten_ = true;
    }
    --cursor_;
    rewritten_ = rewritten_ || *cursor_ != character || cursor_ < matchEnd_;
    *cursor_ = character;
    coverByteAfterMatch();
    return moved;
}

void InputLayer::TESTING_ONLY_rebuild(const TestSettings& settings) {
    std::free(buffer_);
    buffer_ = text_ = nullptr;
    settings_ = settings;
    startOver();
}

void InputLayer::allocate() {
    const std::size_t size = frontMargin + settings_.bufferSize + backMargin;
    buffer_ = static_cast<char*>(settings_.reallocate(nullptr, size));
    if (buffer_ == nullptr) {
        stopProcess(FatalCondition::bufferCannotBeAllocated);
    }
    std::memset(buffer_, 0, size);
    capacity_ = settings_.bufferSize;
    begin_ = cursor_ = limit_ = text_ = buffer_ + frontMargin;
}

/// Doubles the buffer. PRECONDITION: the text is at its beginning.
void InputLayer::grow() {
    const std::ptrdiff_t cursor = cursor_ - text_;
    const std::ptrdiff_t limit = limit_ - text_;
    const std::ptrdiff_t match = yytext - text_;
    const std::ptrdiff_t matchEnd = matchEnd_ - text_;
    const bool inMatch = matchEnd_ != nullptr;
    void* const grown = settings_.reallocate(buffer_, frontMargin + 2 * capacity_ + backMargin);
    if (grown == nullptr) {
        stopProcess(FatalCondition::bufferCannotGrow);
    }
    capacity_ *= 2;
    buffer_ = static_cast<char*>(grown);
    begin_ = text_ = buffer_ + frontMargin;
    cursor_ = text_ + cursor;
    limit_ = text_ + limit;
    if (inMatch) {
        yytext = text_ + match;
        matchEnd_ = text_ + matchEnd;
    }
}

/// Moves the buffered text so that it starts `offset` bytes into the buffer; returns by how many bytes it moved.
std::ptrdiff_t InputLayer::moveTextTo(std::size_t offset) {
    char* const target = text_ + offset;
    const std::ptrdiff_t distance = target - begin_;
    std::memmove(target, begin_, static_cast<std::size_t>(limit_ - begin_));
    origin_ -= distance;
    begin_ += distance;
    cursor_ += distance;
    limit_ += distance;
    if (matchEnd_ != nullptr) {
        yytext += distance;
        matchEnd_ += distance;
    }
    return distance;
}

/// Makes room before the buffered text; returns by how many bytes it moved.
std::ptrdiff_t InputLayer::moveTextToEnd() {
    const std::size_t room = capacity_ - static_cast<std::size_t>(limit_ - begin_);
    if (room == 0) {
        stopProcess(FatalCondition::noRoomToPushBack);
    }
    const std::ptrdiff_t moved = moveTextTo(room);
    std::memset(limit_, 0, backMargin);
    return moved;
}

/// The first read of a scan ends at a block of the stream, if the position of the stream is known.
std::size_t InputLayer::nextReadSize() {
    if (!std::exchange(firstRead_, false)) {
        return settings_.readSize;
    }
    const long place = std::ftell(yyin);
    return place > 0 ? settings_.readSize - static_cast<std::size_t>(place) % settings_.readSize : settings_.readSize;
}

/// One read of at most `size` bytes; 0 at the end of the stream. Interrupted reads are made again.
std::size_t InputLayer::read(char* target, std::size_t size) {
    for (;;) {
        const std::size_t count = std::fread(target, 1, size, yyin);
        if (std::ferror(yyin) == 0) {
            return count;
        }
        if (count == 0 && errno != EINTR) {
            stopProcess(FatalCondition::readFailed);
        }
        if (errno == EINTR) {
            std::clearerr(yyin);
        }
        if (count > 0) {
            return count;
        }
    }
}

} // namespace rose
