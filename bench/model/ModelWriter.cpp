#include "model/ModelWriter.h"

namespace bench {

namespace {

constexpr std::size_t lineLength = 90;

} // namespace

std::string ModelWriter::otherQuidOfNext() {
    return otherQuid(nextQuid_++);
}

void ModelWriter::documentation(std::size_t length) {
    std::string words = sentence(random, length);
    counts.add(Counted::descriptionCharacters, words.size());
    if (length <= lineLength) {
        text.quoted("documentation", words);
        return;
    }
    for (std::size_t at = lineLength; at < words.size(); at += lineLength) {
        const std::size_t blank = words.rfind(' ', at);
        words[blank] = '\n';
        at = blank;
    }
    text.lines("documentation", words);
}

void ModelWriter::declareType(std::size_t number) {
    if (declared_.size() <= number) {
        declared_.resize(number + 1);
    }
    if (!declared_[number]) {
        declared_[number] = true;
        counts.add(Counted::declaredTypes);
    }
}

} // namespace bench
