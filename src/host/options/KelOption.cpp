#include "host/options/KelOption.h"

#include <algorithm>
#include <utility>

KelOption::KelOption(KelOptionDescription description)
    : description_(std::move(description)), value_(description_.defaultValue) {}

KelOption::~KelOption() = default;

const KelString& KelOption::getValue() const {
    return value_;
}

bool KelOption::setValue(const KelString& value) {
    const std::vector<KelOptionChoice>& choices = description_.choices;
    const bool allowed = choices.empty() || std::any_of(choices.begin(), choices.end(),
                                                        [&](const auto& choice) { return choice.identifier == value; });
    if (allowed) {
        value_ = value;
    }
    return allowed;
}
