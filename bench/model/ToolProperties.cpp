#include "model/ToolProperties.h"

#include "model/ModelWriter.h"

namespace bench {

namespace {

constexpr std::uint64_t settingNames = 60;

void beginSettings(ModelWriter& writer) {
    writer.text.beginList("attributes", "Attribute_Set");
}

void setting(ModelWriter& writer) {
    PetalText& text = writer.text;
    text.beginObject("Attribute");
    text.quoted("tool", writer.random.chance(50) ? "Java" : "DDL");
    text.quoted("name", featureName(writer.random.below(settingNames)));
    if (writer.random.chance(60)) {
        text.plain("value", "FALSE");
    } else {
        text.quoted("value", sentence(writer.random, 20));
    }
    text.end();
}

} // namespace

void uuid(ModelWriter& writer, unsigned percent) {
    if (!writer.random.chance(percent)) {
        return;
    }
    PetalText& text = writer.text;
    beginSettings(writer);
    text.beginObject("Attribute");
    text.quoted("tool", "IDL");
    text.quoted("name", "uuid");
    text.value("value", "Text", "DCE:" + otherQuid(writer.random.next()) + "-11e1-0000-0060973f945c:1");
    text.end();
    text.end();
}

void settingsUpTo(ModelWriter& writer, std::uint64_t size) {
    beginSettings(writer);
    while (writer.text.size() < size) {
        setting(writer);
    }
    writer.text.end();
}

} // namespace bench
