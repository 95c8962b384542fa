#include "petal/countObjects.h"

#include "host/model/KelModel.h"
#include "host/model/KelTraversalOperation.h"

namespace petal {

namespace {

class Count final : public KelTraversalOperation {
public:
    void post_process(KelObject* /*object*/, void* /*userData*/) override { ++objects; }

    std::uint64_t objects = 0;
};

} // namespace

std::uint64_t countObjects(KelModel& model) {
    Count count;
    model._depthTraversal(count, nullptr);
    return count.objects;
}

} // namespace petal
