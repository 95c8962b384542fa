#pragma once

#include "builder/BuilderState.h"
#include "completion/cleanup.h"
#include "host/log/KelLog.h"
#include "host/model/KelModel.h"

#include <map>
#include <string>
#include <string_view>

namespace rose::test {

/// The builder's state by name; what is null, false, 0 or empty is left out.
using State = std::map<std::string, std::string>;

State builderState();

/// What of `after` is not in `before`, and with a "-" the names that are gone: "name=value -name".
std::string difference(const State& before, const State& after);

/// A model being filled by scans, without the rest of an import.
class ScannedModel {
public:
    ScannedModel();
    ~ScannedModel();
    ScannedModel(const ScannedModel&) = delete;
    ScannedModel& operator=(const ScannedModel&) = delete;

    /// Scans a stream of these bytes.
    static void scan(std::string_view text);

    /// What scanning `text` changes in the builder's state.
    static std::string change(std::string_view text);

private:
    class SilentLog final : public KelLog {
        void record(const KelLogEvent&) override {}
    };

    SilentLog log_;
    KelModel model_;
    ImportWatch watch_;
};

} // namespace rose::test
