#pragma once

class KelBaseType;

namespace rose {

// The logical base types that converted types derive from. Made by each `setRoseTypes`; meaningless afterwards.
extern KelBaseType* undefined;
extern KelBaseType* charBase;
extern KelBaseType* intBase;
extern KelBaseType* numberBase;
extern KelBaseType* binBase;

/// The base type that a type of that SQL data type derives from; the binary one when no other is meant.
[[nodiscard]] KelBaseType* getBaseType(const char* sqlDataType);

} // namespace rose
