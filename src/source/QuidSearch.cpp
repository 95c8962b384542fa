// Only lines matter for tokens: each text and comment ends with its line, so the tokens of a line can be told without
// those before. Nesting matters for owners. Tools write the quid right after the head of the object, where the two
// lines are enough; for other quids, an object around is found by its indentation, and read from there on. If that
// shows no damage, the whole file would be read the same there, for every repair of nesting begins with a damage.

#include "source/QuidSearch.h"

#include "notation/ByteClasses.h"
#include "notation/ByteRuns.h"
#include "notation/Reader.h"
#include "notation/wordKind.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <span>
#include <utility>

namespace source {

namespace {

using notation::ByteClass;
using notation::classOf;
using notation::EventKind;

constexpr std::size_t portion = std::size_t{256} * 1024; // of the file; it stays in the cache while it is searched
constexpr std::size_t longestLine = std::size_t{512} * 1024;
constexpr std::size_t lookBack = std::size_t{16} * 1024; // of the text before, for the head of an object
constexpr std::size_t lookAhead = std::size_t{4} * 1024; // from a quid's name to the end of its text
constexpr std::size_t localWindow = std::size_t{16} * 1024;
constexpr std::size_t localMargin = 16; // shows that the text has ended
constexpr std::size_t blockSize = 64;
constexpr std::size_t padding = 1 + notation::runs::stride; // behind the text, a NUL first

constexpr std::string_view quidWord = "quid";
constexpr std::string_view designWord = "Design";
constexpr std::string_view objectWord = "object";

bool isInWord(char byte) {
    return !notation::endsRun<notation::stopsWord>(byte);
}

bool isBlank(char byte) {
    return classOf(byte) == ByteClass::blank || byte == '\r'; // in files whose lines end with LF
}

/// The first byte that cannot be in the text of a quid, nor in another text unless it is escaped.
const char* endOfQuoted(const char* text) {
    return notation::endOfRun<notation::stopsQuoted>(notation::runs::endOfQuoted(text));
}

/// Fills a buffer from a file, as far as that goes. Returns how much of it is filled then.
std::size_t fill(std::span<char> buffer, units::OpenFile& file) {
    std::size_t filled = 0;
    for (std::size_t count = 1; count > 0 && filled < buffer.size(); filled += count) {
        count = file.read(buffer.data() + filled, buffer.size() - filled);
    }
    return filled;
}

/// The index of the last line's first byte.
std::size_t lastLineBegin(std::string_view text) {
    const void* end = text.empty() ? nullptr : ::memrchr(text.data(), '\n', text.size());
    return end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - text.data()) + 1 : 0;
}

/// The lines of a file before a place, the last one first.
class LinesBefore {
public:
    /// `text` is a part of the file from the offset `begin` on; it ends with a line.
    LinesBefore(std::string_view text, std::uint64_t begin, units::OpenFile& file)
        : file_(file), text_(text), begin_(begin) {}

    /// The next line; nothing at the begin of the file, or for a line of extreme length.
    std::optional<std::string_view> next() {
        for (;;) {
            const std::size_t begin = lastLineBegin(text_.substr(0, std::max<std::size_t>(text_.size(), 1) - 1));
            if (begin > 0 || (begin_ == 0 && !text_.empty())) {
                const std::string_view line = text_.substr(begin);
                text_.remove_suffix(line.size());
                return line;
            }
            if (begin_ == 0 || text_.size() == longestLine) {
                return std::nullopt;
            }
            readBefore(begin_ + text_.size());
        }
    }
    /// The offset of the line.
    [[nodiscard]] std::uint64_t offset() const { return begin_ + text_.size(); }

private:
    void readBefore(std::uint64_t end) {
        size_ = std::min(longestLine, 2 * size_);
        begin_ = end - std::min<std::uint64_t>(end, size_);
        buffer_.resize(static_cast<std::size_t>(end - begin_));
        file_.seek(begin_);
        fill(buffer_, file_);
        text_ = buffer_;
    }

    units::OpenFile& file_;
    std::string_view text_; // what has not been returned
    std::uint64_t begin_;   // of the text, as an offset
    std::string buffer_;
    std::size_t size_ = lookBack; // half of what to read next
};

/// The column of the first byte of a line that is not a blank, as the reader counts them.
std::size_t indentOf(std::string_view line) {
    constexpr std::size_t tabWidth = 8;
    std::size_t columns = 0;
    for (const char byte : line) {
        if (byte == '\t') {
            columns += tabWidth - columns % tabWidth;
        } else if (byte == ' ') {
            ++columns;
        } else {
            break;
        }
    }
    return columns;
}

/// The parentheses that are opened in a block, less those closed.
int balanceOf(const char* block) {
    static_assert(blockSize <= SCHAR_MAX);
    signed char balance = 0; // so that the compiler counts in vectors of bytes
    for (std::size_t index = 0; index < blockSize; ++index) {
        balance = static_cast<signed char>(balance + (block[index] == '(') - (block[index] == ')'));
    }
    return balance;
}

} // namespace

QuidSearch::QuidSearch(const std::filesystem::path& file)
    : source_(file), again_(file),
      buffer_(std::make_unique_for_overwrite<char[]>(portion + lookBack + lookAhead + padding)) {
    refill();
    const std::size_t end = text_.find_first_of("\r\n");
    const bool isCr = end != std::string_view::npos && text_[end] == '\r' && byte(end + 1) != '\n';
    isLost_ = isLost_ || isCr || (end == std::string_view::npos && !isWhole_);
}

/// Drops text before the place of the search and appends more.
void QuidSearch::refill() {
    const std::size_t dropped = next_ > lookBack ? next_ - lookBack : 0;
    text_.remove_prefix(dropped);
    if (!text_.empty()) { // as it is at first, without a place
        std::memmove(buffer_.get(), text_.data(), text_.size());
    }
    origin_ += dropped;
    for (std::size_t* index : {&next_, &checked_, &lexed_, &headBegin_}) {
        *index -= std::min(dropped, *index);
    }
    const std::size_t kept = text_.size();
    const std::size_t filled = kept + fill({buffer_.get() + kept, portion}, source_);
    isWhole_ = filled < kept + portion;
    text_ = {buffer_.get(), filled};
    std::fill_n(buffer_.get() + filled, padding, '\0');
    const std::size_t to = isWhole_ ? filled : filled - std::min(filled, lookAhead);
    if (to > checked_) {
        measureDepth(checked_, to);
        countDesigns(checked_, to);
        checked_ = to;
    }
}

void QuidSearch::measureDepth(std::size_t from, std::size_t to) {
    constexpr auto most = static_cast<std::int64_t>(notation::Reader::Settings().deepest / 2);
    std::size_t at = from;
    for (; at + blockSize <= to; at += blockSize) {
        depth_ = std::max<std::int64_t>(0, depth_ + balanceOf(text_.data() + at));
        isLost_ = isLost_ || depth_ > most;
    }
    for (; at < to; ++at) {
        depth_ += text_[at] == '(' ? 1 : text_[at] == ')' && depth_ > 0 ? -1 : 0;
    }
}

void QuidSearch::countDesigns(std::size_t from, std::size_t to) {
    for (std::size_t at = text_.find(designWord, from); at < to; at = text_.find(designWord, at + 1)) {
        std::size_t before = at;
        while (before > 0 && !isInWord(text_[before - 1]) && classOf(text_[before - 1]) <= ByteClass::lineEnd) {
            --before;
        }
        const bool isKind = before != at && before >= objectWord.size() && !isInWord(byte(at + designWord.size()));
        designs_ += isKind && text_.compare(before - objectWord.size(), objectWord.size(), objectWord) == 0 ? 1 : 0;
    }
}

std::optional<FoundQuid> QuidSearch::next() {
    while (!isLost_) {
        const std::size_t at = text_.find(quidWord, next_);
        if (!isWhole_ && (at == std::string_view::npos || at + lookAhead > text_.size())) {
            next_ = at != std::string_view::npos ? at : text_.size() - (quidWord.size() - 1);
            refill();
            continue;
        }
        if (at == std::string_view::npos) {
            break;
        }
        next_ = at + quidWord.size();
        const bool isWord = !isInWord(byte(next_)) && (at == 0 || !isInWord(text_[at - 1]));
        if (std::optional<FoundQuid> found = isWord ? quidAt(at) : std::nullopt) {
            return found;
        }
    }
    return std::nullopt;
}

/// The quid whose property's name may be at an index; nothing if there is none.
std::optional<FoundQuid> QuidSearch::quidAt(std::size_t at) {
    const std::optional<std::size_t> begin = textBegin(next_);
    if (!begin || !lexTo(at)) {
        return std::nullopt;
    }
    const std::size_t end = indexOf(endOfQuoted(text_.data() + *begin));
    if (byte(end) != '"' || end - at > lookAhead) {
        return lose();
    }
    const std::string_view text = text_.substr(*begin, end - *begin);
    std::optional<FoundQuid> found;
    if (head_ == Head::whole) {
        found = {origin_ + headBegin_, origin_ + at, text};
    } else {
        found = ownedByOther(at, end + 1, text);
    }
    lexed_ = next_ = end + 1;
    head_ = Head::none;
    return found;
}

/// The first byte of the quoted text that comes next; nothing if there is none.
std::optional<std::size_t> QuidSearch::textBegin(std::size_t at) {
    at = indexOf(notation::runs::endOfBlanks(text_.data() + at));
    while (at < text_.size() && (isBlank(text_[at]) || text_[at] == '\n')) {
        ++at;
    }
    const ByteClass next = classOf(byte(at));
    // Commas are damages, after which a value may still follow.
    if (next == ByteClass::control || next == ByteClass::comment || next == ByteClass::comma || byte(at) == '/') {
        return at == text_.size() && isWhole_ ? std::nullopt : lose();
    }
    return next == ByteClass::quote ? std::optional(at + 1) : std::nullopt;
}

/// Advances from token to token, at least from the line before, and returns whether a token begins at the index.
bool QuidSearch::lexTo(std::size_t at) {
    const std::size_t line = lineBegin(at, lexed_);
    const std::size_t before = line > lexed_ ? lineBegin(line - 1, lexed_) : lexed_;
    if (before > lexed_) {
        lexed_ = before;
        head_ = Head::none;
    } else if (before == 0 && origin_ > 0) { // no place between tokens
        lose();
    }
    while (lexed_ < at && !isLost_) {
        takeToken();
    }
    return lexed_ == at && !isLost_;
}

/// Passes a token, a blank or the end of a line.
void QuidSearch::takeToken() {
    const char first = text_[lexed_];
    switch (classOf(first)) {
    case ByteClass::blank:
        lexed_ = indexOf(notation::runs::endOfBlanks(text_.data() + lexed_ + 1));
        break;
    case ByteClass::lineEnd:
        head_ = first == '\n' && head_ != Head::whole ? Head::none : head_; // the kind is on the same line
        ++lexed_;
        break;
    case ByteClass::open:
        head_ = Head::opened;
        headBegin_ = lexed_++;
        break;
    case ByteClass::quote:
        head_ = head_ == Head::whole ? Head::whole : Head::none;
        takeQuoted();
        break;
    case ByteClass::bar:
        head_ = Head::none;
        lexed_ = lineEnd(lexed_);
        break;
    case ByteClass::comment:
        lexed_ = lineEnd(lexed_);
        break;
    case ByteClass::control:
        lose();
        break;
    case ByteClass::word:
        takeWord();
        break;
    default:
        head_ = Head::none;
        ++lexed_;
    }
}

void QuidSearch::takeQuoted() {
    const char* at = endOfQuoted(text_.data() + lexed_ + 1);
    while (*at == '\\' || *at == '\r') {
        const bool isEscape = *at == '\\' && (at[1] == '"' || at[1] == '\\');
        at = endOfQuoted(at + (isEscape ? 2 : 1));
    }
    if (*at == '"') {
        lexed_ = indexOf(at + 1);
    } else { // the line or the text ends
        lose();
    }
}

void QuidSearch::takeWord() {
    if (text_[lexed_] == '/' && byte(lexed_ + 1) == '/') {
        lexed_ = lineEnd(lexed_);
        return;
    }
    const std::size_t begin = lexed_;
    const char* const letters = notation::runs::endOfLetters(text_.data() + begin);
    lexed_ = indexOf(notation::endOfRun<notation::stopsWord>(letters));
    const std::string_view word = text_.substr(begin, lexed_ - begin);
    if (head_ == Head::opened && word == objectWord) {
        head_ = Head::named;
    } else if (head_ == Head::named && notation::wordKind(word) == notation::TokenKind::word) {
        head_ = Head::whole;
    } else if (head_ != Head::whole || notation::wordKind(word) != notation::TokenKind::reference) {
        head_ = Head::none;
    }
}

/// The begin of the line that the index is in, or `least` if that is later.
std::size_t QuidSearch::lineBegin(std::size_t at, std::size_t least) const {
    return at > least ? least + lastLineBegin(text_.substr(least, at - least)) : least;
}

std::size_t QuidSearch::lineEnd(std::size_t at) const {
    return std::min(text_.find('\n', at), text_.size());
}

/// The "(" of objects before an index, by lines, that may be around it: if lines are indented, the first is.
std::vector<std::uint64_t> QuidSearch::objectsBefore(std::size_t at) {
    constexpr std::size_t mostNear = 4;
    constexpr std::string_view opening = "(object ";
    const std::size_t line = lineBegin(at, 0);
    const std::string_view blanks = text_.substr(line, at - line);
    const std::size_t indent = indentOf(blanks);
    std::vector<std::uint64_t> objects;
    LinesBefore lines(text_.substr(0, line), origin_, again_);
    while (const std::optional<std::string_view> one = lines.next()) {
        const bool isAround = !one->starts_with(blanks) && indentOf(*one) < indent;
        const std::size_t open = isAround || objects.size() < mostNear ? one->find(opening) : std::string_view::npos;
        if (open != std::string_view::npos && one->substr(0, open).find_first_of("\"|#;/") == std::string_view::npos) {
            objects.insert(isAround ? objects.begin() : objects.end(), lines.offset() + open);
            if (isAround) {
                break;
            }
        }
    }
    return objects;
}

/// The quid of an object that has other properties before it. `end` is an index in the line of the quid's text.
std::optional<FoundQuid> QuidSearch::ownedByOther(std::size_t at, std::size_t end, std::string_view text) {
    using enum QuidOwner::Reading;
    for (const std::uint64_t object : objectsBefore(at)) {
        readBytes_ += origin_ + at - object;
        if (readBytes_ > 2 * (origin_ + at)) { // reading the file once is faster
            break;
        }
        const QuidOwner owner = ownerFrom(object, at, end);
        switch (owner.reading) {
        case quid:
            return FoundQuid{owner.begin, owner.headEnd, text};
        case noQuid:
            return std::nullopt;
        case damage:
            return lose();
        case ended:
            break;
        }
    }
    return lose();
}

/// Calls `read` for the text from an object on.
template <class Read>
auto QuidSearch::readFrom(std::uint64_t object, std::size_t at, std::size_t end, Read read) {
    const std::size_t window = std::min<std::uint64_t>(localWindow, origin_ + end - object + localMargin);
    if (object >= origin_) {
        // Without text that the reader does not need, it has all in its window.
        const auto begin = static_cast<std::size_t>(object - origin_);
        notation::MemorySource text(text_.substr(begin, end - begin));
        return read(text, object, origin_ + at, window);
    }
    again_.seek(object);
    return read(again_, object, origin_ + at, window);
}

QuidOwner QuidSearch::ownerFrom(std::uint64_t object, std::size_t at, std::size_t end) {
    constexpr std::size_t far = std::size_t{4} * 1024;
    const bool isInMemory = object >= origin_ && end + notation::InputWindow::readable <= text_.size();
    std::optional<QuidOwner> owner;
    if (origin_ + at - object > far) {
        owner = readFrom(object, at, end, skimOwner);
    } else if (isInMemory) {
        owner = readUsualOwner(text_.data() + (object - origin_), object, origin_ + at);
    }
    if (owner) {
        return *owner;
    }
    return readFrom(object, at, end, readOwner);
}

TopObjects findTopObjects(const std::filesystem::path& file) {
    constexpr int mostEvents = 1000;
    units::OpenFile source(file);
    notation::Reader::Settings settings;
    settings.window = localWindow;
    notation::Reader reader(source, settings);
    TopObjects tops;
    for (int count = 0; count < mostEvents && !tops.design && reader.next(); ++count) {
        const notation::Event& event = reader.event();
        if (event.kind == EventKind::damage) {
            break;
        }
        if (event.kind == EventKind::start && event.construct == notation::Construct::object) {
            tops.first = tops.first.value_or(event.place.offset);
            if (event.depth == 0 && event.text == designWord) {
                tops.design = event.place.offset;
            }
        }
    }
    return tops;
}

} // namespace source
