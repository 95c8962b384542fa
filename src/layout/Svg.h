#pragma once

#include "layout/markup.h"
#include "text/Output.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace layout {

/// Writes to memory that has room.
class Pen {
public:
    explicit Pen(char* at) : at_(at) {}

    Pen& put(std::string_view text) {
        at_ = std::copy(text.begin(), text.end(), at_);
        return *this;
    }
    Pen& put(double number) {
        at_ = writeDecimal(at_, number);
        return *this;
    }
    Pen& put(const Point& point) { return put(point.x).put(",").put(point.y); }
    Pen& put(std::uint64_t number) {
        at_ = std::to_chars(at_, at_ + mostDigits, number).ptr;
        return *this;
    }
    Pen& putColour(Colour colour) {
        at_ = writeColour(at_, colour);
        return *this;
    }
    [[nodiscard]] const char* end() const { return at_; }

private:
    char* at_;
};

inline constexpr std::size_t longestMore = 128; ///< of the further attributes of an element
inline constexpr std::size_t mostOfElement = 6 * mostDigits + 256 + longestMore;
static_assert(mostOfElement <= text::BufferedOutput::mostRoom);

/// Puts the elements of a document to an output.
class Svg {
public:
    Svg(Theme theme, text::BufferedOutput& output) : theme_(theme), output_(output) {}

    [[nodiscard]] Theme theme() const { return theme_; }
    void raw(std::string_view text) { output_.put(text); }
    void text(std::string_view text) { standsAsMarkup(text) ? raw(text) : raw(markup(text)); }
    /// `start` is the attribute's name with what is before and after it.
    void attribute(std::string_view start, std::string_view value) {
        raw(start);
        text(value);
        raw(R"(")");
    }
    /// Has `write` put up to `mostOfElement` bytes.
    template <class Write>
    void put(Write write) {
        Pen pen(output_.room(mostOfElement));
        write(pen);
        output_.putUntil(pen.end());
    }

    void rectangle(const Rectangle& box, std::string_view more = "") {
        put([&](Pen& pen) {
            pen.put(R"(<rect x=")").put(box.x).put(R"(" y=")").put(box.y).put(R"(" width=")").put(box.width);
            pen.put(R"(" height=")").put(box.height).put(R"(")").put(more).put("/>");
        });
    }
    void ellipse(const Rectangle& box, std::string_view more = "") {
        put([&](Pen& pen) {
            pen.put(R"(<ellipse cx=")").put(box.centre().x).put(R"(" cy=")").put(box.centre().y);
            pen.put(R"(" rx=")").put(box.width / 2).put(R"(" ry=")").put(box.height / 2).put(R"(")");
            pen.put(more).put("/>");
        });
    }
    void line(const Point& from, const Point& to, std::string_view more = "") {
        put([&](Pen& pen) {
            pen.put(R"(<line x1=")").put(from.x).put(R"(" y1=")").put(from.y).put(R"(" x2=")").put(to.x);
            pen.put(R"(" y2=")").put(to.y).put(R"(")").put(more).put("/>");
        });
    }
    /// `start` is that of a polyline or polygon.
    template <class Points>
    void points(std::string_view start, const Points& points, std::string_view more = "") {
        std::string_view between = start;
        for (const Point& point : points) {
            put([&](Pen& pen) { pen.put(between).put(point); });
            between = " ";
        }
        put([&](Pen& pen) { pen.put(R"(")").put(more).put("/>"); });
    }
    template <class Points>
    void polyline(const Points& corners, std::string_view more = "") {
        points(R"(<polyline points=")", corners, more);
    }
    template <class Points = std::initializer_list<Point>>
    void polygon(const Points& corners, std::string_view more = "") {
        points(R"(<polygon points=")", corners, more);
    }

private:
    Theme theme_;
    text::BufferedOutput& output_;
};

} // namespace layout
