#include "scanner/InputLayer.h"

#include "scanner/FatalConditions.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace rose {

std::FILE* yyin = nullptr;
char* yytext = nullptr;
std::size_t yyleng = 0;

constinit InputLayer scannerInput;

int yyinput() { return scannerInput.get(); }

void yyunput(int character, char* matchStart) {
    const std::ptrdiff_t moved = scannerInput.unget(static_cast<char>(character));
    yytext = matchStart + moved;
}

void InputLayer::startOver() {
    origin_ = begin_ = limit_ = cursor_ = matchBegin_ = matchEnd_ = 0;
    inMatch_ = ended_ = rewritten_ = false;
}

bool InputLayer::refill(Position keep) {
    if (cursor_ > limit_) {
        stopProcess(FatalCondition::endOfBufferMissed);
    }
    if (ended_) {
        return false;
    }
    if (buffer_ == nullptr) {
        allocate();
    }
    begin_ = keep;
    moveTextTo(0);
    const auto kept = static_cast<std::size_t>(limit_ - begin_);
    if (kept == capacity_) {
        grow();
    }
    std::size_t held = kept;
    const std::size_t wanted = kept + std::max(kept, settings_.readSize);
    while (!ended_ && held < wanted && held < capacity_) {
        const std::size_t size = std::min(settings_.readSize, capacity_ - held);
        if (size < settings_.readSize && held > kept) {
            break; // reads of other sizes than the stream's own blocks cost twice as much
        }
        const std::size_t count = read(text_ + held, size);
        ended_ = count == 0;
        held += count;
    }
    limit_ = begin_ + static_cast<Position>(held);
    std::memset(text_ + held, 0, backMargin);
    return held > kept;
}

void InputLayer::beginMatch(Position begin, Position end) {
    matchBegin_ = begin;
    matchEnd_ = end;
    cursor_ = end;
    inMatch_ = true;
    yyleng = static_cast<std::size_t>(end - begin);
    terminateMatch();
}

void InputLayer::endMatch() {
    unterminateMatch();
    inMatch_ = false;
}

bool InputLayer::fill() {
    if (cursor_ < limit_) {
        return true;
    }
    unterminateMatch();
    const bool found = refill(inMatch_ ? std::min(matchBegin_, cursor_) : cursor_);
    terminateMatch();
    return found;
}

int InputLayer::get() {
    if (!fill()) {
        return -1;
    }
    const bool covered = inMatch_ && cursor_ == matchEnd_;
    const char byte = covered ? behindMatch_ : *at(cursor_);
    ++cursor_;
    return static_cast<unsigned char>(byte);
}

std::ptrdiff_t InputLayer::unget(char character) {
    unterminateMatch();
    if (buffer_ == nullptr) {
        allocate();
    }
    std::ptrdiff_t moved = 0;
    if (cursor_ == begin_) {
        moved = begin_ == origin_ ? moveTextToEnd() : 0;
        --begin_;
        rewritten_ = true;
    }
    --cursor_;
    rewritten_ = rewritten_ || *at(cursor_) != character;
    *at(cursor_) = character;
    terminateMatch();
    return moved;
}

bool InputLayer::takeRewritten() { return std::exchange(rewritten_, false); }

void InputLayer::TESTING_ONLY_rebuild(const TestSettings& settings) {
    std::free(buffer_);
    buffer_ = text_ = nullptr;
    capacity_ = 0;
    settings_ = settings;
    startOver();
}

/// Puts the match's NUL behind it; the byte it covers is kept aside.
void InputLayer::terminateMatch() {
    if (inMatch_) {
        yytext = at(matchBegin_);
        char* const end = at(matchEnd_);
        behindMatch_ = *end;
        *end = 0;
    }
}

void InputLayer::unterminateMatch() {
    if (inMatch_) {
        *at(matchEnd_) = behindMatch_;
    }
}

void InputLayer::allocate() {
    const std::size_t size = frontMargin + settings_.bufferSize + backMargin;
    buffer_ = static_cast<char*>(settings_.reallocate(nullptr, size));
    if (buffer_ == nullptr) {
        stopProcess(FatalCondition::bufferCannotBeAllocated);
    }
    std::memset(buffer_, 0, size);
    text_ = buffer_ + frontMargin;
    capacity_ = settings_.bufferSize;
}

void InputLayer::grow() {
    const std::size_t capacity = capacity_ * 2;
    void* const grown = settings_.reallocate(buffer_, frontMargin + capacity + backMargin);
    if (grown == nullptr) {
        stopProcess(FatalCondition::bufferCannotGrow);
    }
    buffer_ = static_cast<char*>(grown);
    text_ = buffer_ + frontMargin;
    capacity_ = capacity;
}

/// Moves [begin_, limit_) so that it starts at text_[offset].
void InputLayer::moveTextTo(std::ptrdiff_t offset) {
    std::memmove(text_ + offset, at(begin_), static_cast<std::size_t>(limit_ - begin_));
    origin_ = begin_ - offset;
}

/// Makes room in front of the buffered text; returns by how many bytes it moved.
std::ptrdiff_t InputLayer::moveTextToEnd() {
    const auto room = static_cast<std::ptrdiff_t>(capacity_) - (limit_ - begin_);
    if (room == 0) {
        stopProcess(FatalCondition::noRoomToPushBack);
    }
    moveTextTo(room);
    std::memset(at(limit_), 0, backMargin);
    return room;
}

/// One read of at most `size` bytes; 0 at the end of the stream. Interrupted reads are made again.
std::size_t InputLayer::read(char* target, std::size_t size) {
    for (;;) {
        errno = 0;
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
