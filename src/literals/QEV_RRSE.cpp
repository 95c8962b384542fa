#include "literals/QEV_RRSE.h"

#include "host/bridge/KelImportBridge.h"
#include "host/literals/messageCode.h"
#include "host/log/KelLog.h"
#include "host/options/BLIB.h"

QEV_RRSE::TextInstance::TextInstance(const KelString& identifier, const KelString& text)
    : KelParameterizedTextLiteral(identifier, text) {}

QEV_RRSE::TextInstance::~TextInstance() = default;

void QEV_RRSE::TextInstance::update(const KelString& text, const KelDOMElement* entry) {
    KelParameterizedTextLiteral::update(text, entry);
}

KelString QEV_RRSE::TextInstance::toString() const {
    return getText();
}

QEV_RRSE::MessageInstance::MessageInstance(const KelString& code, const KelString& text, const KelString& severity)
    : KelMessageLiteral(code, text, severity) {
    fullCode_ = fullMessageCode(PREFIX, severity, code);
}

QEV_RRSE::MessageInstance::~MessageInstance() = default;

void QEV_RRSE::MessageInstance::update(const KelString& text, const KelDOMElement* entry) {
    KelMessageLiteral::update(text, entry);
}

KelString QEV_RRSE::MessageInstance::toString() const {
    return getText();
}

KelString QEV_RRSE::MessageInstance::getMessage() const {
    return composeMessage(toString());
}

void QEV_RRSE::MessageInstance::log(KelLog& log) const {
    if (log.accepts(getSeverityLevel())) {
        record(log, toString());
    }
}

void QEV_RRSE::MessageInstance::throwException() const {
    raise(toString());
}

QEV_RRSE::MessageInstance_String::MessageInstance_String(const KelString& code, const KelString& text,
                                                         const KelString& severity)
    : KelMessageLiteral(code, text, severity) {
    fullCode_ = fullMessageCode(PREFIX, severity, code);
}

QEV_RRSE::MessageInstance_String::~MessageInstance_String() = default;

void QEV_RRSE::MessageInstance_String::update(const KelString& text, const KelDOMElement* entry) {
    KelMessageLiteral::update(text, entry);
}

KelString QEV_RRSE::MessageInstance_String::toString(const KelString& value) const {
    KelTextParameters parameters = prapareForParameters();
    setParameterValue(parameters, 0, value);
    return createParametrizedText(parameters);
}

KelString QEV_RRSE::MessageInstance_String::getMessage(const KelString& value) const {
    return composeMessage(toString(value));
}

void QEV_RRSE::MessageInstance_String::log(KelLog& log, const KelString& value) const {
    if (log.accepts(getSeverityLevel())) {
        record(log, toString(value));
    }
}

void QEV_RRSE::MessageInstance_String::throwException(const KelString& value) const {
    raise(toString(value));
}

QEV_RRSE::QEV_RRSE() {
    DOCUMENT_ID = KelImportBridge::documentId;
}

const KelString& QEV_RRSE::getDocumentId() const {
    return DOCUMENT_ID;
}

KelTextLiteral* const* QEV_RRSE::listAllLiterals() const {
    return textLiterals;
}

KelTextLiteral* const* QEV_RRSE::getAllLiterals() {
    return textLiterals;
}

const KelTextLiteral* QEV_RRSE::findTextLiteral(const KelString& id) {
    for (KelTextLiteral* const* literal = textLiterals; *literal != nullptr; ++literal) {
        if ((*literal)->getIdentifier() == id) {
            return *literal;
        }
    }
    return nullptr;
}

// The objects below are constructed in this order: the full code of a message is built from the
// prefix, an option refers to its values and default.

KelString QEV_RRSE::DOCUMENT_ID(KelImportBridge::documentId);
const KelString QEV_RRSE::PREFIX("QEV_RRSE");

QEV_RRSE::TextInstance QEV_RRSE::BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT_DESCRIPTION("IbmRationalRose40ImportDescription",
                                                                                  "");

QEV_RRSE::TextInstance QEV_RRSE::BP_FILE_DEFAULT("BP_FILE_DEFAULT", "");
KelBridgeOptionLiteral QEV_RRSE::BP_FILE("BP_FILE", KelImportBridge::option::file, "File",
                                         "The bridge imports metadata from Rational Rose native MDL files.\n"
                                         "     \n"
                                         "     ",
                                         nullptr, &BP_FILE_DEFAULT);

KelBridgeEnumValueLiteral QEV_RRSE::BP_SUPPORTED_TYPES_ENUM_C__(KelImportBridge::target::cPlusPlus,
                                                                KelImportBridge::target::cPlusPlus);
KelBridgeEnumValueLiteral QEV_RRSE::BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8(KelImportBridge::target::oracle,
                                                                           KelImportBridge::target::oracle);

namespace {

KelTextLiteral* const supportedTypes[] = {&QEV_RRSE::BP_SUPPORTED_TYPES_ENUM_C__,
                                          &QEV_RRSE::BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8};

} // namespace

KelBridgeOptionEnumerationLiteral QEV_RRSE::BP_SUPPORTED_TYPES_ENUM("BP_SUPPORTED_TYPES_ENUM", "", supportedTypes, 2);
KelBridgeOptionLiteral QEV_RRSE::BP_SUPPORTED_TYPES(
    "BP_SUPPORTED_TYPES", KelImportBridge::option::supportedTypes, "Enumerated",
    "Indicates to interpret attribute or argument type as being one of the specified target system",
    &BP_SUPPORTED_TYPES_ENUM, &BP_SUPPORTED_TYPES_ENUM_C__);

KelBridgeOptionLiteral QEV_RRSE::BP_ENCODING(
    "BP_ENCODING", KelImportBridge::option::encoding, "Enumerated",
    "Specifies the character set encoding of the model to be imported or exported:\n"
    " If there are multiple choices for a language, the actual encoding will be indicated between parentheses.\n"
    " The default is 'Western European (Windows 1252)' on Windows and 'Western European (ISO 8859-1)' on other "
    "platforms.",
    &BLIB::BP_ENCODING_ENUM, &BLIB::BP_ENCODING_ENUM_WESTERN_EUROPEAN__WINDOWS_1252_);

// clang-format off
QEV_RRSE::MessageInstance_String QEV_RRSE::ROS_I_UNABLE_TO_OPEN_INPUT_FILE("1", "Unable to open input file : {0}", "FATAL");
QEV_RRSE::MessageInstance QEV_RRSE::ROS_I_BAD_INPUT_FILE_FORMAT("2", "Invalid input file format", "FATAL");
QEV_RRSE::MessageInstance QEV_RRSE::ROS_I_INPUT_MODEL_PARAMETER_IS_NULL("3", "Input model parameter is null", "FATAL");
QEV_RRSE::MessageInstance QEV_RRSE::ROS_I_CLASS_NOT_IN_DIAGRAM("5", "Class not found in diagram", "FATAL");
QEV_RRSE::MessageInstance QEV_RRSE::ROS_I_DIAGRAM_NOT_CREATED("9", "Diagram not yet created", "FATAL");
QEV_RRSE::MessageInstance QEV_RRSE::ROS_I_NO_RELATION("10", "Cannot find pre-existing relation", "FATAL");
QEV_RRSE::MessageInstance_String QEV_RRSE::ROS_I_ASSOCIATION_NOT_IN_PACKAGE("11", "Cannot add association {0} to package", "ERROR");
QEV_RRSE::MessageInstance_String QEV_RRSE::ROS_I_CLASS_NAME_TO_BE_FOUND("12", "Class name to be found is {0}", "DEBUG");
QEV_RRSE::MessageInstance_String QEV_RRSE::ROS_I_CREATING_PACKAGE("13", "Creating Package {0}...", "STATUS");
QEV_RRSE::MessageInstance_String QEV_RRSE::ROS_I_CREATING_DIAGRAM("14", "Creating Class Diagram {0}...", "STATUS");
QEV_RRSE::MessageInstance_String QEV_RRSE::ROS_I_CREATING_ASSOCIATION("15", "Creating association class {0}...", "DEBUG");
QEV_RRSE::MessageInstance_String QEV_RRSE::ROS_I_CREATING_CLASS("16", "Creating class {0}...", "DEBUG");
QEV_RRSE::MessageInstance_String QEV_RRSE::ROS_I_CREATING_ATTRIBUTE("17", "Creating attribute {0}...", "DEBUG");
QEV_RRSE::MessageInstance_String QEV_RRSE::ROS_I_CONNECTING_TYPE("18", "Connecting Type {0}...", "DEBUG");
QEV_RRSE::MessageInstance QEV_RRSE::ROS_I_DUPLICATE_ATTRIBUTE("19", "Error: Duplicate attribute not added to class", "WARNING");
// clang-format on

KelTextLiteral* const QEV_RRSE::textLiterals[24] = {
    &BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT_DESCRIPTION,
    &BP_FILE_DEFAULT,
    &BP_FILE,
    &BP_SUPPORTED_TYPES_ENUM_C__,
    &BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8,
    &BP_SUPPORTED_TYPES_ENUM,
    &BP_SUPPORTED_TYPES,
    &BP_ENCODING,
    &ROS_I_UNABLE_TO_OPEN_INPUT_FILE,
    &ROS_I_BAD_INPUT_FILE_FORMAT,
    &ROS_I_INPUT_MODEL_PARAMETER_IS_NULL,
    &ROS_I_CLASS_NOT_IN_DIAGRAM,
    &ROS_I_DIAGRAM_NOT_CREATED,
    &ROS_I_NO_RELATION,
    &ROS_I_ASSOCIATION_NOT_IN_PACKAGE,
    &ROS_I_CLASS_NAME_TO_BE_FOUND,
    &ROS_I_CREATING_PACKAGE,
    &ROS_I_CREATING_DIAGRAM,
    &ROS_I_CREATING_ASSOCIATION,
    &ROS_I_CREATING_CLASS,
    &ROS_I_CREATING_ATTRIBUTE,
    &ROS_I_CONNECTING_TYPE,
    &ROS_I_DUPLICATE_ATTRIBUTE,
    nullptr,
};

namespace {

/// Registers the catalog with the host for as long as the library is loaded.
struct Registration {
    Registration() { catalog.init(); }
    QEV_RRSE catalog;
};

const Registration registration;

} // namespace
