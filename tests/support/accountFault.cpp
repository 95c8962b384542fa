#include "support/accountFault.h"

#include "host/model/KelModel.h"
#include "host/model/KelTraversalOperation.h"

namespace {

class CountByType final : public KelTraversalOperation {
public:
    explicit CountByType(const KelModel& model) : model_(model) {}
    void post_process(KelObject* object, void*) override { counts[object->elementType] += object == &model_ ? 0 : 1; }

    std::map<KelElementType, std::uint64_t> counts;

private:
    const KelModel& model_;
};

} // namespace

bool areInOrder(const std::vector<ledger::Entry>& entries) {
    std::map<std::uint32_t, std::uint64_t> reached;
    for (const ledger::Entry& entry : entries) {
        std::uint64_t& before = reached[entry.file];
        if (entry.place.offset < before) {
            return false;
        }
        before = entry.place.offset;
    }
    return true;
}

std::string accountFault(const ledger::Ledger& ledger, KelModel& model) {
    CountByType there(model);
    model._depthTraversal(there, nullptr);
    for (const auto& [type, accounts] : ledger.accounts) {
        const std::uint64_t told = accounts.byObject + accounts.byProperty + accounts.byRepair;
        if (accounts.byNothing > 0 || told != there.counts[type]) {
            return "of type " + std::to_string(static_cast<int>(type)) + " the model has " +
                   std::to_string(there.counts[type]) + ", the ledger tells of " + std::to_string(told) +
                   " and lacks " + std::to_string(accounts.byNothing);
        }
        there.counts.erase(type);
    }
    std::erase_if(there.counts, [](const auto& count) { return count.second == 0; });
    return there.counts.empty() ? "" : "the ledger tells of no object of some type";
}
