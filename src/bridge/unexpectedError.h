#pragma once

class KelException;

namespace rose {

/// The host's failure for whatever the bridge has no message of its own for, worded by the first call. From then on
/// it can be thrown when there is no memory to word another; until then the call may throw `std::bad_alloc`.
const KelException& preparedUnexpectedError();

/// Throws that failure, worded anew as long as there is memory to word it.
[[noreturn]] void throwUnexpectedError();

} // namespace rose
