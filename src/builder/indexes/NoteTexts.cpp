#include "builder/indexes/NoteTexts.h"

#include <unordered_map>

namespace rose::NoteTexts {

namespace {

std::unordered_map<int, const NoteRecord*> firstRecords;

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
