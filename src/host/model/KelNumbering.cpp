#include "host/model/KelNumbering.h"

#include "host/model/KelObject.h"

#include <atomic>

namespace {

std::atomic<std::uint32_t> numberings = 0;

} // namespace

KelNumbering::KelNumbering() : stamp_(++numberings) {}

void KelNumbering::give(const KelObject& object, std::uint32_t number) noexcept {
    object.number_ = number;
    object.numberStamp_ = stamp_;
}

std::uint32_t KelNumbering::numberOf(const KelObject& object) const noexcept {
    return object.numberStamp_ == stamp_ ? object.number_ : 0;
}
