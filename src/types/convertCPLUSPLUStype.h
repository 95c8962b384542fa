#pragma once

class KelConcreteType;
class KelDerivedType;
class KelModel;

namespace rose {

/// The type of the conversion model that replaces the declared type, which the declared type's values and attributes
/// in use have moved to; attributes held by reference may have moved to a type of their own. The declared type joins
/// the conversion model, which owns it.
KelConcreteType* convertCPLUSPLUStype(KelModel* conversion, KelDerivedType* declared);

} // namespace rose
