// Depth-first traversal, and transcoding, which is a traversal. The path is on the heap, because models from files can
// be nested deeper than the stack allows.
#include "host/encoding/KelEncodingConverter.h"
#include "host/encoding/convertText.h"
#include "host/model/KelObject.h"
#include "host/model/KelRenaming.h"
#include "host/model/KelTraversalOperation.h"
#include "host/model/links/KelRelation.h"

#include <algorithm>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

/// The first objects of a traversal.
enum class Visit { objectAndParts, partsOnly };

/// The progress of the traversal in one object of the path.
struct Place {
    KelObject* object;
    void* userData;
    std::size_t end = 0; // the index of the current owning end
    int part = 0;        // the index of the next object at that end
};

/// The visited objects that have several owners.
class SharedParts {
public:
    /// Whether the part has not been visited.
    bool isNew(const KelObject& part) {
        const bool mayShare = part.getMetaClass().ownedEnds().size() > 1;
        return !mayShare || part.getParentCount() < 2 || visited_.insert(&part).second;
    }

private:
    std::unordered_set<const KelObject*> visited_;
};

/// The next part of the object, or null when there is none left.
KelObject* nextPart(Place& place) {
    const auto ends = place.object->getMetaClass().owningEnds();
    for (; place.end < ends.size(); ++place.end, place.part = 0) {
        const KelRelation& relation = *ends[place.end].relation;
        if (place.part < relation.count(*place.object, true)) {
            return relation.at(*place.object, true, place.part++);
        }
    }
    return nullptr;
}

void visitDepthFirst(KelObject& root, KelTraversalOperation& operation, void* userData, Visit visit) {
    std::vector<Place> path;
    SharedParts shared;
    if (visit == Visit::objectAndParts) {
        operation.pre_process(&root, userData);
    }
    path.push_back({&root, userData});
    while (!path.empty()) {
        if (KelObject* part = nextPart(path.back()); part != nullptr) {
            if (shared.isNew(*part)) {
                void* partData = path.back().userData;
                operation.pre_process(part, partData);
                path.push_back({part, partData});
            }
        } else {
            const Place done = path.back();
            path.pop_back();
            if (done.object != &root || visit == Visit::objectAndParts) {
                operation.post_process(done.object, done.userData);
            }
        }
    }
}

/// Converts the texts of each visited object, but only collects the new names: renaming would move an object within the
/// collections that are being traversed.
class Transcoding final : public KelTraversalOperation {
public:
    Transcoding(KelEncodingConverter& from, KelEncodingConverter& to, int& stringCount, int& errorCount)
        : from_(from), to_(to), stringCount_(stringCount), errorCount_(errorCount) {}

    void post_process(KelObject* object, void* /*userData*/) override {
        if (object->elementType == KelElementType::metadataOrigin) {
            return; // in the host's encoding already
        }
        convertName(*object);
        for (const KelField& field : object->getMetaClass().fields()) {
            const auto* text = std::get_if<KelString KelObject::*>(&field.member);
            if (text != nullptr) {
                convert(object->*(*text));
            } else if (const auto* texts = std::get_if<KelTypeTexts KelObject::*>(&field.member)) {
                convertAll((object->*(*texts)).changed());
            }
        }
    }

    /// Gives the objects their new names.
    void rename() { newNames_.carryOut(); }

private:
    void convertName(KelObject& object) {
        const KelString& name = object.getName();
        if (from_.isPlainText(name.view()) && to_.isPlainText(name.view())) {
            stringCount_ += static_cast<int>(!name.isEmpty());
            return;
        }
        KelString converted(name);
        convert(converted);
        newNames_.add(object, std::move(converted));
    }

    void convertAll(KelTypeTexts::Texts* texts) {
        if (texts != nullptr) {
            std::ranges::for_each(texts->all(), [this](KelString* text) { convert(*text); });
        }
    }

    void convert(KelString& text) {
        if (!text.isEmpty()) {
            ++stringCount_;
            errorCount_ += static_cast<int>(!convertText(from_, to_, text));
        }
    }

    KelEncodingConverter& from_;
    KelEncodingConverter& to_;
    int& stringCount_;
    int& errorCount_;
    KelRenaming newNames_;
};

} // namespace

KelTraversalOperation::~KelTraversalOperation() = default;

void KelTraversalOperation::pre_process(KelObject* /*object*/, void*& /*userData*/) {}

void KelObject::transcode(KelEncodingConverter* from, KelEncodingConverter* to, int& stringCount, int& errorCount) {
    Transcoding transcoding(*from, *to, stringCount, errorCount);
    depthTraversal(transcoding, nullptr);
    transcoding.rename();
}

void KelObject::depthTraversal(KelTraversalOperation& operation, void* userData) {
    visitDepthFirst(*this, operation, userData, Visit::objectAndParts);
}

void KelObject::_depthTraversal(KelTraversalOperation& operation, void* userData) {
    visitDepthFirst(*this, operation, userData, Visit::partsOnly);
}
