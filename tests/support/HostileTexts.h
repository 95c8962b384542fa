#pragma once

#include <array>
#include <string>
#include <string_view>

/// Texts that some output's syntax could take for a part of itself. Every format writes each of them as a name and as
/// a documentation, and its consumer must show them as they are.
inline constexpr std::array<std::string_view, 30> hostileTexts{
    "pin no",
    "Sales::Order",
    "Vector<int>",
    "a\"b",
    "a'b",
    "a\\b",
    "a\\Nb",
    "订单",
    "x{y}",
    "a;b",
    "--",
    "}",
    "$$",
    "%date()",
    "!include /etc/hostname",
    "end note",
    "#123;",
    "%%{init}%%",
    "</script>",
    "]]>",
    "javascript:",
    "",
    "&name",
    "`a`b``",
    "a\nb",
    "a\rb",
    "\xE2\x80\xAE"
    "txt.exe",
    "\x01",
    "a\xFF"
    "b",
    "**b** __u__ //i// ~t $var",
};

/// 300 characters, of which 150 take three bytes each.
inline std::string longHostileText() {
    std::string text(150, 'x');
    for (int count = 0; count < 150; ++count) {
        text += "单";
    }
    return text;
}
