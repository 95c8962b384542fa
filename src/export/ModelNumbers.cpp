#include "export/ModelNumbers.h"

#include "export/JsonMembers.h"
#include "export/jsonCommonMembers.h"
#include "export/jsonForms.h"
#include "host/model/KelModel.h"
#include "text/utf8.h"

namespace exporter {

namespace {

/// Looks at every text that a form writes.
class TextCheck final : public JsonMembers {
public:
    explicit TextCheck(bool& allValid) : allValid_(allValid) {}

    void text(const char* /*member*/, const KelString& value) override { entry(value); }
    void entry(const KelString& text) override { allValid_ = allValid_ && text::isValidUtf8(text.view()); }
    void word(const char* /*member*/, const char* /*value*/) override {}
    void number(const char* /*member*/, std::int64_t /*value*/) override {}
    void trueFlag(const char* /*member*/) override {}
    void reference(const char* /*member*/, const KelObject* /*target*/) override {}
    void references(const char* /*member*/, std::span<const KelObject* const> /*targets*/) override {}
    void startList(const char* /*member*/) override {}
    void endList() override {}
    void startEntry() override {}
    void endEntry() override {}
    void startObject(const char* /*member*/) override {}
    void endObject() override {}

private:
    bool& allValid_;
};

} // namespace

ModelNumbers::ModelNumbers(const KelModel& model, const source::SourceMap* places) : places_(places) {
    walkModel(model, documentParts, *this);
}

std::uint32_t ModelNumbers::numberOf(const KelObject* object) const {
    return object != nullptr ? numbers_.numberOf(*object) : 0;
}

void ModelNumbers::enter(const KelObject& object) {
    if (numbers_.numberOf(object) == 0) { // an argument may have two owners
        numbers_.give(object, ++count_);
    }
    if (textsValid_) {
        TextCheck check(textsValid_);
        writePlace(object, places_, check);
        jsonFormOf(object).writeMembers(object, check);
    }
}

} // namespace exporter
