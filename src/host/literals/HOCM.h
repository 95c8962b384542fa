#pragma once

#include "host/literals/KelMessageLiteral.h"
#include "host/literals/KelTextLiteralsCollection.h"

/// The messages that the host has for every bridge.
class KEL_API HOCM : public KelTextLiteralsCollection {
public:
    /// A message without parameter.
    class KEL_API MessageInstance : public KelMessageLiteral {
    public:
        MessageInstance(const KelString& code, const KelString& text, const KelString& severity);
        ~MessageInstance() override;

        /// Records the message in the log, if that accepts its level.
        void log(KelLog& log) const;
    };

    /// A message with the parameter "{0}".
    class KEL_API MessageInstance_String : public KelMessageLiteral {
    public:
        MessageInstance_String(const KelString& code, const KelString& text, const KelString& severity);
        ~MessageInstance_String() override;

        [[nodiscard]] KelString toString(const KelString& value) const;
        /// The message as `throwException` throws it.
        [[nodiscard]] KelString getMessage(const KelString& value) const;
        void log(KelLog& log, const KelString& value) const;
        /// Throws the message as a `KelException`; nothing is logged.
        [[noreturn]] void throwException(const KelString& value) const;
    };

    /// A message with the parameters "{0}" and "{1}".
    class KEL_API MessageInstance_String_String : public KelMessageLiteral {
    public:
        MessageInstance_String_String(const KelString& code, const KelString& text, const KelString& severity);
        ~MessageInstance_String_String() override;

        [[nodiscard]] KelString toString(const KelString& first, const KelString& second) const;
        void log(KelLog& log, const KelString& first, const KelString& second) const;
    };

    /// Something failed that the bridge has no message for; the parameter names the bridge.
    static MessageInstance_String BRIDGE_UNEXPECTED_ERROR;
    /// The conversion service does not know the encoding, which the parameter names.
    static MessageInstance_String ICU_CANNNOT_CREATE_CONVERTER;
    /// There is nothing to convert, since source and target are in the same encoding.
    static MessageInstance ICU_EQUIVALENT_CONVERTERS;
    /// Texts held bytes that their encoding does not have; the parameters are how many texts, out of how many.
    static MessageInstance_String_String ICU_CONVERSION_ERROR;
    /// An import was refused because the model given to it owns something; the parameter names the bridge.
    static MessageInstance_String BRIDGE_MODEL_NOT_EMPTY;
    /// An import was refused because another one is running in the process; the parameter names the bridge.
    static MessageInstance_String BRIDGE_IMPORT_RUNNING;

    const KelString& getDocumentId() const override;
    KelTextLiteral* const* listAllLiterals() const override;
};
