#pragma once

#include "notation/Event.h"
#include "notation/Line.h"

namespace notation {

/// Takes the text of one file from a reading that somebody else drives, so that several can share it: all events in
/// their order, a line in the place of its own.
class Listener {
public:
    Listener() = default;
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    virtual ~Listener() = default;

    /// The parameters are valid until it returns. Exceptions end the reading.
    virtual void take(const Event& event) = 0;
    virtual void take(const Line& line) = 0;
};

} // namespace notation
