#include "host/literals/HOCM.h"

#include "host/literals/messageCode.h"
#include "host/log/KelLog.h"

namespace {

constexpr const char* prefix = "HOCM";

KelString fillIn(const KelParameterizedTextLiteral& literal, std::initializer_list<const KelString*> values) {
    KelTextParameters parameters = literal.prapareForParameters();
    int index = 0;
    for (const KelString* value : values) {
        literal.setParameterValue(parameters, index++, *value);
    }
    return literal.createParametrizedText(parameters);
}

} // namespace

HOCM::MessageInstance::MessageInstance(const KelString& code, const KelString& text, const KelString& severity)
    : KelMessageLiteral(code, text, severity) {
    fullCode_ = fullMessageCode(prefix, severity, code);
}

HOCM::MessageInstance::~MessageInstance() = default;

void HOCM::MessageInstance::log(KelLog& log) const {
    if (log.accepts(getSeverityLevel())) {
        record(log, getText());
    }
}

HOCM::MessageInstance_String::MessageInstance_String(const KelString& code, const KelString& text,
                                                     const KelString& severity)
    : KelMessageLiteral(code, text, severity) {
    fullCode_ = fullMessageCode(prefix, severity, code);
}

HOCM::MessageInstance_String::~MessageInstance_String() = default;

KelString HOCM::MessageInstance_String::toString(const KelString& value) const {
    return fillIn(*this, {&value});
}

KelString HOCM::MessageInstance_String::getMessage(const KelString& value) const {
    return composeMessage(toString(value));
}

void HOCM::MessageInstance_String::log(KelLog& log, const KelString& value) const {
    if (log.accepts(getSeverityLevel())) {
        record(log, toString(value));
    }
}

void HOCM::MessageInstance_String::throwException(const KelString& value) const {
    raise(toString(value));
}

HOCM::MessageInstance_String_String::MessageInstance_String_String(const KelString& code, const KelString& text,
                                                                   const KelString& severity)
    : KelMessageLiteral(code, text, severity) {
    fullCode_ = fullMessageCode(prefix, severity, code);
}

HOCM::MessageInstance_String_String::~MessageInstance_String_String() = default;

KelString HOCM::MessageInstance_String_String::toString(const KelString& first, const KelString& second) const {
    return fillIn(*this, {&first, &second});
}

void HOCM::MessageInstance_String_String::log(KelLog& log, const KelString& first, const KelString& second) const {
    if (log.accepts(getSeverityLevel())) {
        record(log, toString(first, second));
    }
}

HOCM::MessageInstance_String HOCM::BRIDGE_UNEXPECTED_ERROR(
    "1",
    "Unexpected error in bridge {0}: the import was given up and its model emptied. "
    "Please check that the file is complete, and report the error together with the file.",
    "FATAL");
HOCM::MessageInstance_String HOCM::ICU_CANNNOT_CREATE_CONVERTER(
    "2",
    "The encoding \"{0}\" is not known: all texts were left as they are in the file. "
    "Please choose one of the encodings that the option Encoding offers and import again.",
    "WARNING");
HOCM::MessageInstance HOCM::ICU_EQUIVALENT_CONVERTERS(
    "3", "The texts are already in the encoding of the repository and need no conversion.", "DEBUG");
HOCM::MessageInstance_String_String HOCM::ICU_CONVERSION_ERROR(
    "4",
    "{0} of {1} texts held bytes that are not valid in the chosen encoding and now show a replacement character. "
    "Please check the option Encoding and import again.",
    "WARNING");
HOCM::MessageInstance_String HOCM::BRIDGE_MODEL_NOT_EMPTY(
    "5",
    "Bridge {0} imports into an empty model only: nothing was imported and the model was left as it is. "
    "Please import into a new model, or empty this one first.",
    "FATAL");
HOCM::MessageInstance_String HOCM::BRIDGE_IMPORT_RUNNING(
    "6",
    "Bridge {0} runs one import at a time: another one is running in this process, and nothing was imported. "
    "Please import again when that has ended, or in another process.",
    "FATAL");

namespace {

const KelString documentId("KelHostMessages");

KelTextLiteral* const textLiterals[] = {&HOCM::BRIDGE_UNEXPECTED_ERROR,
                                        &HOCM::ICU_CANNNOT_CREATE_CONVERTER,
                                        &HOCM::ICU_EQUIVALENT_CONVERTERS,
                                        &HOCM::ICU_CONVERSION_ERROR,
                                        &HOCM::BRIDGE_MODEL_NOT_EMPTY,
                                        &HOCM::BRIDGE_IMPORT_RUNNING,
                                        nullptr};

// Declared after the literals, so that it is removed from the registry before they are destroyed.
struct RegisteredMessages : HOCM {
    RegisteredMessages() { init(); }
} registeredMessages;

} // namespace

const KelString& HOCM::getDocumentId() const {
    return documentId;
}

KelTextLiteral* const* HOCM::listAllLiterals() const {
    return textLiterals;
}
