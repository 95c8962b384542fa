#pragma once

#include "host/log/KelLog.h"
#include "host/model/KelModel.h"

#include <string>
#include <string_view>
#include <vector>

/// The header of a model file, long enough for a scan that starts behind its first 20 bytes to see all of the rest.
inline constexpr std::string_view petalHeader = "\n(object Petal\n    version 40\n    charSet 0)\n";

/// A log that keeps what it is told, each event as "code text".
class KeptLog final : public KelLog {
public:
    void record(const KelLogEvent& event) override;
    [[nodiscard]] int count(std::string_view code) const;

    std::vector<std::string> lines;
};

/// What a test may choose of an import.
struct ImportChoices {
    std::string_view types = "C++";
    std::string_view encoding = "windows-1252";
};

/// A model imported through the bridge's interface from a text, or from a file, in this process.
class ImportedModel {
public:
    using Choices = ImportChoices;

    /// Imports `petalHeader` + `body`.
    [[nodiscard]] static ImportedModel ofBody(std::string_view body, const Choices& choices = {});
    /// Imports a file of exactly these bytes, named "model.mdl".
    [[nodiscard]] static ImportedModel ofBytes(std::string_view bytes, const Choices& choices = {});
    [[nodiscard]] static ImportedModel ofFile(const std::string& path, const Choices& choices = {});

    /// The message of the exception that ended the import; empty when it succeeded.
    std::string failure;
    KeptLog log;
    KelModel model;

    /// The whole model as a JSON document; the path of the file, which differs between runs, is left out.
    [[nodiscard]] std::string json() const;
    /// The model as its outline shows it, without the line of its origin.
    [[nodiscard]] std::string tree() const;

private:
    ImportedModel(const std::string& path, const Choices& choices);
};

/// Imports what follows the header of the category "Logical View".
[[nodiscard]] ImportedModel importLogicalView(std::string_view content, const ImportChoices& choices = {});

/// The model as a JSON document; the path of the file, which differs between runs, is left out.
[[nodiscard]] std::string jsonOf(const KelModel& model);
