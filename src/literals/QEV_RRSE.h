#pragma once

#include "host/literals/KelMessageLiteral.h"
#include "host/literals/KelTextLiteralsCollection.h"
#include "host/options/KelBridgeEnumValueLiteral.h"
#include "host/options/KelBridgeOptionEnumerationLiteral.h"
#include "host/options/KelBridgeOptionLiteral.h"

class KelLog;

/// Every text that the bridge shows to its host: its description, its options and its messages.
///
/// All literals are made when the library is loaded and registered with the host; they do not change afterwards.
class QEV_RRSE final : public KelTextLiteralsCollection {
public:
    /// A plain text.
    class TextInstance final : public KelParameterizedTextLiteral {
    public:
        TextInstance(const KelString& identifier, const KelString& text);
        ~TextInstance() override;
        void update(const KelString& text, const KelDOMElement* entry) override;
        [[nodiscard]] KelString toString() const;
    };

    /// A message without parameter.
    class MessageInstance final : public KelMessageLiteral {
    public:
        MessageInstance(const KelString& code, const KelString& text, const KelString& severity);
        ~MessageInstance() override;
        void update(const KelString& text, const KelDOMElement* entry) override;
        [[nodiscard]] KelString toString() const;
        /// The message as it is thrown: "[" + full code + "] " + text.
        [[nodiscard]] KelString getMessage() const;
        /// Records the text, the full code and the severity level. Does nothing if the log does not listen to it.
        void log(KelLog& log) const;
        /// Throws the message as a `KelException`; nothing is logged.
        [[noreturn]] void throwException() const;
    };

    /// A message with one parameter, "{0}".
    class MessageInstance_String final : public KelMessageLiteral {
    public:
        MessageInstance_String(const KelString& code, const KelString& text, const KelString& severity);
        ~MessageInstance_String() override;
        void update(const KelString& text, const KelDOMElement* entry) override;
        [[nodiscard]] KelString toString(const KelString& value) const;
        [[nodiscard]] KelString getMessage(const KelString& value) const;
        void log(KelLog& log, const KelString& value) const;
        [[noreturn]] void throwException(const KelString& value) const;
    };

    QEV_RRSE();
    ~QEV_RRSE() = default;

    const KelString& getDocumentId() const override;
    /// All literals: the texts and options, then the messages in catalog order, then a null pointer.
    KelTextLiteral* const* listAllLiterals() const override;
    [[nodiscard]] static KelTextLiteral* const* getAllLiterals();
    /// The first literal with exactly this identifier, or null.
    [[nodiscard]] static const KelTextLiteral* findTextLiteral(const KelString& id);

    static KelString DOCUMENT_ID;
    static const KelString PREFIX; // of every full message code

    static TextInstance BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT_DESCRIPTION;

    static TextInstance BP_FILE_DEFAULT;
    static KelBridgeOptionLiteral BP_FILE;
    static KelBridgeEnumValueLiteral BP_SUPPORTED_TYPES_ENUM_C__;
    static KelBridgeEnumValueLiteral BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8;
    static KelBridgeOptionEnumerationLiteral BP_SUPPORTED_TYPES_ENUM;
    static KelBridgeOptionLiteral BP_SUPPORTED_TYPES;
    static KelBridgeOptionLiteral BP_ENCODING;

    static MessageInstance_String ROS_I_UNABLE_TO_OPEN_INPUT_FILE;
    static MessageInstance ROS_I_BAD_INPUT_FILE_FORMAT;
    static MessageInstance ROS_I_INPUT_MODEL_PARAMETER_IS_NULL;
    static MessageInstance ROS_I_CLASS_NOT_IN_DIAGRAM;
    static MessageInstance ROS_I_DIAGRAM_NOT_CREATED;
    static MessageInstance ROS_I_NO_RELATION;
    static MessageInstance_String ROS_I_ASSOCIATION_NOT_IN_PACKAGE;
    static MessageInstance_String ROS_I_CLASS_NAME_TO_BE_FOUND;
    static MessageInstance_String ROS_I_CREATING_PACKAGE;
    static MessageInstance_String ROS_I_CREATING_DIAGRAM;
    static MessageInstance_String ROS_I_CREATING_ASSOCIATION;
    static MessageInstance_String ROS_I_CREATING_CLASS;
    static MessageInstance_String ROS_I_CREATING_ATTRIBUTE;
    static MessageInstance_String ROS_I_CONNECTING_TYPE;
    static MessageInstance ROS_I_DUPLICATE_ATTRIBUTE;

    /// The list behind `getAllLiterals`.
    static KelTextLiteral* const textLiterals[24];
};
