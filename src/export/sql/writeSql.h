#pragma once

#include "export/ClassKind.h"
#include "export/Exporter.h"

#include <array>

namespace exporter {

inline constexpr std::array sqlOptions{
    Option{"dialect", "postgresql|sqlite|oracle", "postgresql", "the system that the script is for"},
    Option{"tables", "auto|all|persistent", "auto",
           "the classes that are tables; auto: persistent when a class is, else all"},
    Option{"inheritance", "joined|single|concrete", "joined",
           "a table for each class, for a tree of classes, or for each class that is not abstract"},
    Option{"key", "natural|surrogate", "natural", "the primary keys of the model, or a generated key for each table"},
    Option{"names", "snake|asis", "snake", "names such as order_line, or as they are in the model"},
    Option{"name-limit", "BYTES", "63", "the length at which a name is cut, from 30 to 63", Accepts::number},
    Option{"type-map", "FILE", "", "types of columns for names of types: lines NAME = SQL TYPE", Accepts::text},
    Option{"map", "FILE", "", "writes which element became which table and column, as CSV", Accepts::text, false, true},
    ClassKinds::option,
};

/// Throws `WrongOption` for a name limit that no system has and a type map that cannot be read.
void checkSqlOptions(const OptionValues& options);

/// Writes a script that creates the tables of the model, for the dialect of the options.
void writeSql(const ExportContext& context);

} // namespace exporter
