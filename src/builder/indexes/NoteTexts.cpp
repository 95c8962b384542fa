#include "builder/indexes/NoteTexts.h"

#include <map>

namespace rose::NoteTexts {

namespace {

std::map<int, const NoteRecord*> firstRecords; // ordered: a file could choose numbers that collide

} // namespace

void add(const NoteRecord& record) {
    firstRecords.try_emplace(record.viewId, &record);
}

const NoteRecord* find(int viewId) {
    const auto found = firstRecords.find(viewId);
    return found != firstRecords.end() ? found->second : nullptr;
}

void clear() noexcept {
    firstRecords.clear();
}

} // namespace rose::NoteTexts
