#pragma once

#include "export/modelWalk.h"
#include "host/model/KelNumbering.h"

#include <cstdint>

namespace source {
class SourceMap;
}

namespace exporter {

/// What the document must know of a model before its first line is written: the number of every object, counted
/// from 1 in the order of the document, and whether all texts that it will hold are valid UTF-8.
class ModelNumbers final : private ModelVisitor {
public:
    /// `places`, unless null, are written, too.
    ModelNumbers(const KelModel& model, const source::SourceMap* places);

    /// The object's number, or 0 for an object that the document does not hold.
    [[nodiscard]] std::uint32_t numberOf(const KelObject* object) const;
    [[nodiscard]] bool areTextsValid() const { return textsValid_; }

private:
    void enter(const KelObject& object) override;
    void startPart(const Part& /*part*/) override {}
    void endPart(const Part& /*part*/) override {}
    void leave(const KelObject& /*object*/) override {}

    const source::SourceMap* places_;
    KelNumbering numbers_;
    std::uint32_t count_ = 0;
    bool textsValid_ = true;
};

} // namespace exporter
