#pragma once

class KelConcreteType;
class KelDerivedType;
class KelModel;

namespace rose {

/// The SQL data type of an Oracle type name, which must be spelt exactly so; "undefined" for any other.
[[nodiscard]] const char* convertDataTypeOracleToKel(const char* oracleName);

/// Takes a declared text such as NUMBER(10,2) apart. Returns the SQL data type of its type name, and sets the length
/// and the scale, 0 where the text gives none.
[[nodiscard]] const char* retrieveDataTypeInfo(const char* text, int& length, int& scale);

/// The type of the conversion model that replaces the declared type, whose referenced attributes move there. The caller
/// keeps the declared type.
KelConcreteType* convertORACLEtype(KelModel* conversion, KelDerivedType* declared);

} // namespace rose
