#pragma once

#include "export/sql/Schema.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

class KelType;

namespace exporter::sql {

/// Tells the types of columns: by the file of the user, by the data types of the model, and by a table of well-known
/// names of types. Reading it from several threads is safe.
class TypeMap {
public:
    TypeMap() = default;
    /// Reads the user's file: a line "NAME = SQL TYPE" for each type; "#" begins a line that does not count, and so
    /// does an empty line. Throws `WrongOption` when it cannot be read or has another line.
    explicit TypeMap(const std::string& path);

    [[nodiscard]] bool isEmpty() const { return byName_.empty(); }
    /// As the user's file has it.
    [[nodiscard]] std::optional<ColumnType> ofUser(std::string_view typeName) const;
    /// By the type's data type, length and scale, or by its name. Nothing for a type that neither tells, and for null.
    [[nodiscard]] static std::optional<ColumnType> known(const KelType* type);

private:
    std::map<std::string, ColumnType, std::less<>> byName_; // in lower case
};

/// The type that a text means in programming languages and databases: "java.lang.String", "char*", "NUMBER(10,2)".
[[nodiscard]] std::optional<ColumnType> typeOfName(std::string_view name);

/// The default of a column of this type, and of these values unless they are null, that the initial value of an
/// attribute is; nothing when it is no literal of the type.
[[nodiscard]] std::optional<Default> literalOf(std::string_view initialValue, const ColumnType& type,
                                               const Values* values);

/// Whether a column of one type may refer to a column of the other.
[[nodiscard]] bool areComparable(const ColumnType& one, const ColumnType& other);

} // namespace exporter::sql
