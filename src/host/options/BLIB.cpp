#include "host/options/BLIB.h"

#include <array>
#include <deque>
#include <vector>

namespace {

struct Encoding {
    const char* name; // a name of the conversion service, or "unknown"
    const char* label;
};

// The default first, then by language.
constexpr auto encodings = std::to_array<Encoding>({
    {"windows-1252", "Western European (Windows 1252)"},
    {"windows-1256", "Arabic (Windows 1256)"},
    {"ISO-8859-6", "Arabic (ISO 8859-6)"},
    {"windows-1257", "Baltic (Windows 1257)"},
    {"ISO-8859-4", "Baltic (ISO 8859-4)"},
    {"ISO-8859-13", "Baltic (ISO 8859-13)"},
    {"ISO-8859-14", "Celtic (ISO 8859-14)"},
    {"windows-1250", "Central European (Windows 1250)"},
    {"ISO-8859-2", "Central European (ISO 8859-2)"},
    {"GB18030", "Chinese (GB 18030)"},
    {"windows-936", "Chinese, simplified (Windows 936, GBK)"},
    {"windows-950", "Chinese, traditional (Windows 950)"},
    {"Big5", "Chinese, traditional (Big5)"},
    {"windows-1251", "Cyrillic (Windows 1251)"},
    {"ISO-8859-5", "Cyrillic (ISO 8859-5)"},
    {"KOI8-R", "Cyrillic, Russian (KOI8-R)"},
    {"KOI8-U", "Cyrillic, Ukrainian (KOI8-U)"},
    {"windows-1253", "Greek (Windows 1253)"},
    {"ISO-8859-7", "Greek (ISO 8859-7)"},
    {"windows-1255", "Hebrew (Windows 1255)"},
    {"ISO-8859-8", "Hebrew (ISO 8859-8)"},
    {"windows-932", "Japanese (Windows 932)"},
    {"Shift_JIS", "Japanese (Shift-JIS)"},
    {"EUC-JP", "Japanese (EUC)"},
    {"windows-949", "Korean (Windows 949)"},
    {"EUC-KR", "Korean (EUC)"},
    {"ISO-8859-10", "Nordic (ISO 8859-10)"},
    {"ISO-8859-3", "South European (ISO 8859-3)"},
    {"windows-874", "Thai (Windows 874)"},
    {"ISO-8859-11", "Thai (ISO 8859-11)"},
    {"windows-1254", "Turkish (Windows 1254)"},
    {"ISO-8859-9", "Turkish (ISO 8859-9)"},
    {"UTF-8", "Unicode (UTF-8)"},
    {"windows-1258", "Vietnamese (Windows 1258)"},
    {"ISO-8859-1", "Western European (ISO 8859-1)"},
    {"ISO-8859-15", "Western European (ISO 8859-15)"},
    {"macintosh", "Western European (Mac Roman)"},
    {"IBM437", "Western European (OEM 437)"},
    {"IBM850", "Western European (OEM 850)"},
    {"unknown", "Unknown (texts are left as they are)"},
});

} // namespace

KelBridgeEnumValueLiteral BLIB::BP_ENCODING_ENUM_WESTERN_EUROPEAN__WINDOWS_1252_(encodings.front().name,
                                                                                 encodings.front().label);

namespace {

// The literals of all encodings in the order of the table, then the enumeration itself.
class EncodingLiterals {
public:
    EncodingLiterals() {
        listed_.push_back(&BLIB::BP_ENCODING_ENUM_WESTERN_EUROPEAN__WINDOWS_1252_);
        for (std::size_t i = 1; i < encodings.size(); ++i) {
            listed_.push_back(&others_.emplace_back(encodings[i].name, encodings[i].label));
        }
        listed_.push_back(&BLIB::BP_ENCODING_ENUM);
        listed_.push_back(nullptr);
    }

    [[nodiscard]] KelTextLiteral* const* list() const { return listed_.data(); }

private:
    std::deque<KelBridgeEnumValueLiteral> others_;
    std::vector<KelTextLiteral*> listed_;
};

const EncodingLiterals encodingLiterals;
const KelString documentId("KelHostOptions");

} // namespace

KelBridgeOptionEnumerationLiteral BLIB::BP_ENCODING_ENUM("BP_ENCODING_ENUM", "", encodingLiterals.list(),
                                                         static_cast<int>(encodings.size()));

namespace {

// Declared after the literals, so that it is removed from the registry before they are destroyed.
struct RegisteredOptions : BLIB {
    RegisteredOptions() { init(); }
} registeredOptions;

} // namespace

const KelString& BLIB::getDocumentId() const {
    return documentId;
}

KelTextLiteral* const* BLIB::listAllLiterals() const {
    return encodingLiterals.list();
}
