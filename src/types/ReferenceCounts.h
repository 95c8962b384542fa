#pragma once

class KelArgument;
class KelAttribute;

namespace rose {

/// How many links the attribute has: to its class, its type, its role name maps and its keys.
[[nodiscard]] unsigned int AttributeIsReferenced(const KelAttribute& attribute);

/// How many links the argument has: to its operation, its class and its type.
[[nodiscard]] unsigned int ArgumentIsReferenced(const KelArgument& argument);

} // namespace rose
