#pragma once

class KelAttribute;
class KelType;

namespace rose {

/// Takes the first attribute away from the type it is typed by. Null, and the attribute is left untyped, when
/// nothing but that type knew it.
KelAttribute* takeFirstAttribute(KelType& from);

} // namespace rose
