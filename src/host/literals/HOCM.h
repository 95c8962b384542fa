#pragma once

#include "host/literals/KelMessageLiteral.h"
#include "host/literals/KelTextLiteralsCollection.h"

/// The host's own messages, which every bridge may report. They are registered under the document "KelHostMessages"
/// while the library is loaded. KelMessageLiteral.h has the rules for errors and threads.
class KEL_API HOCM : public KelTextLiteralsCollection {
public:
    /// A message without parameters.
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

        /// The text with the value filled in, without the code.
        [[nodiscard]] KelString toString(const KelString& value) const;
        /// The message as `throwException` throws it.
        [[nodiscard]] KelString getMessage(const KelString& value) const;
        /// Records the message in the log, if that accepts its level.
        void log(KelLog& log, const KelString& value) const;
        /// Throws the message as a `KelException`; nothing is logged.
        [[noreturn]] void throwException(const KelString& value) const;
    };

    /// A message with the parameters "{0}" and "{1}".
    class KEL_API MessageInstance_String_String : public KelMessageLiteral {
    public:
        MessageInstance_String_String(const KelString& code, const KelString& text, const KelString& severity);
        ~MessageInstance_String_String() override;

        /// As in `MessageInstance_String`.
        [[nodiscard]] KelString toString(const KelString& first, const KelString& second) const;
        void log(KelLog& log, const KelString& first, const KelString& second) const;
    };

    /// A failure that no message of the bridge covers. Parameter: the bridge.
    static MessageInstance_String BRIDGE_UNEXPECTED_ERROR;
    /// The conversion service does not know the encoding. Parameter: its name.
    static MessageInstance_String ICU_CANNNOT_CREATE_CONVERTER;
    /// Source and target encoding are the same, so that no text is converted.
    static MessageInstance ICU_EQUIVALENT_CONVERTERS;
    /// Texts had bytes invalid in their encoding. Parameters: the number of these texts, and of all texts.
    static MessageInstance_String_String ICU_CONVERSION_ERROR;
    /// An import was refused because its model is not empty. Parameter: the bridge.
    static MessageInstance_String BRIDGE_MODEL_NOT_EMPTY;
    /// An import was refused because another one is running in the process. Parameter: the bridge.
    static MessageInstance_String BRIDGE_IMPORT_RUNNING;

    const KelString& getDocumentId() const override;
    KelTextLiteral* const* listAllLiterals() const override;
};
