#include "petal/jobs/UnitSurvey.h"

#include "petal/jobs/ImportProcess.h"

#include <algorithm>
#include <numeric>

namespace petal {

namespace {

constexpr std::size_t mostForOne = 32;   // models per child
constexpr std::size_t sharesForEach = 4; // children per parallel process, at least, if there are enough models

} // namespace

UnitSurvey::UnitSurvey(std::span<const Source> sources, ImportRequest request, const FileUses& uses,
                       units::UnitLocator& locator, const JobsRequest& jobs, const StopSignals& signals)
    : sources_(sources), request_(std::move(request)), uses_(uses), locator_(locator), jobs_(jobs), signals_(signals),
      numbers_(sources.size()) {
    std::iota(numbers_.begin(), numbers_.end(), std::size_t{0});
}

std::vector<UnitSurvey::Numbers> UnitSurvey::shared() const {
    const std::size_t shares = static_cast<std::size_t>(jobs_.parallel) * sharesForEach;
    const std::size_t size = std::clamp(numbers_.size() / shares, std::size_t{1}, mostForOne);
    std::vector<Numbers> parts;
    for (Numbers rest = numbers_; !rest.empty(); rest = rest.subspan(parts.back().size())) {
        parts.push_back(rest.first(std::min(size, rest.size())));
    }
    return parts;
}

ImportTask UnitSurvey::taskFor(Numbers numbers) const {
    const auto follow = [this, numbers](const ImportRequest& given, const ImportContext& context) {
        ImportRequest request = given;
        for (const std::size_t number : numbers) {
            request.file = sources_[number].path;
            context.takeTree(readModelTree(request, context.locator));
        }
        return ImportResult();
    };
    return {
        .request = request_, .uses = &uses_, .locator = &locator_, .run = follow, .files = {}, .errors = {}, .log = {}};
}

units::LostUnits UnitSurvey::survey() {
    ProcessPool pool(limitsOf(jobs_), signals_);
    units::LostUnits lost;
    std::vector<std::size_t> losing;
    std::vector<Numbers> parts = shared(); // grows by the rest of failed children
    for (std::size_t next = 0; next < parts.size() || pool.getCount() > 0;) {
        for (; next < parts.size() && pool.getCount() < static_cast<std::size_t>(jobs_.parallel); ++next) {
            pool.start(next, taskFor(parts[next]));
        }
        for (const EndedImport& ended : pool.wait(std::chrono::hours(1))) {
            const Numbers part = parts[ended.number];
            const std::size_t done = std::min(ended.end.losses.size(), part.size());
            for (std::size_t index = 0; index < done; ++index) {
                lost.add(ended.end.losses[index]);
                if (!ended.end.losses[index].units.empty()) {
                    losing.push_back(part[index]);
                }
            }
            // A child may fail because of the time and memory for earlier models: try the model again, unless it was
            // the first.
            if (const std::size_t begin = std::max(done, std::size_t{1}); begin < part.size()) {
                parts.push_back(part.subspan(begin));
            }
        }
    }
    std::ranges::sort(losing);
    numbers_ = std::move(losing);
    return lost;
}

} // namespace petal
