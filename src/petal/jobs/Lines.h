#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace petal {

/// Cuts bytes that arrive in pieces into lines and hands each on when it is whole, its end included. What has no line's
/// end for a megabyte is cut there.
class Lines {
public:
    /// Called with each line, which lives only during the call.
    using Taker = std::function<void(std::string_view line)>;

    /// With an empty taker nobody may add.
    explicit Lines(Taker taker = {}) : taker_(std::move(taker)) {}

    [[nodiscard]] bool isTaken() const { return static_cast<bool>(taker_); }

    void add(std::string_view bytes);
    /// Hands on the last line if it has no end, with one.
    void end();
    /// The last line handed on, without its end; empty when there was none.
    [[nodiscard]] const std::string& getLast() const { return last_; }

private:
    void take(std::string_view line);

    Taker taker_;
    std::string begun_;
    std::string last_;
};

} // namespace petal
