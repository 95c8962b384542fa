// Writes the rule table as flex source to standard output.

#include "scanner/RuleTable.h"

#include <cstdio>
#include <string>

namespace {

using namespace rose;

const char* leadPattern(Lead lead) {
    switch (lead) {
    case Lead::noLead:
        return "";
    case Lead::oneBlank:
        return "[ \\t]";
    case Lead::blanks:
        return "[ \\t]+";
    case Lead::optionalBlanks:
        return "[ \\t]*";
    case Lead::optionalSpaces:
        return "[ ]*";
    }
    return "";
}

const char* tailPattern(Tail tail) {
    switch (tail) {
    case Tail::noTail:
        return "";
    case Tail::valueTail:
        return "[ \\t]+\\\"?[^\\\"\\n]*";
    case Tail::flagTail:
        return "[ \\t]+\\\"?[^\\\")\\n]*";
    case Tail::looseTail:
        return "[ \\t]*\\\"?[^\\\"\\n]*";
    case Tail::spaceTail:
        return "[ ]+\\\"?[^\\\"\\n]*";
    case Tail::lineTail:
        return "[^\\n]*";
    case Tail::viewTail:
        return "[ \\t]+\\\"[^\\\"]*\\\"[ \\t]+\\\"?[^\\\"]*(\\\"[^\\n]*)?";
    }
    return "";
}

std::string quoted(std::string_view text) {
    return text.empty() ? "" : "\"" + std::string(text) + "\"";
}

} // namespace

int main() {
    std::puts("%option noyywrap nounput never-interactive 8bit prefix=\"roseFlex\"\n"
              "%{\n"
              "#include \"FlexScanner.h\"\n"
              "%}\n"
              "%%");
    for (const Pattern& pattern : patterns) {
        const std::string gap = pattern.literal.second.empty() ? "" : "[ \\t]*";
        std::printf("%s%s%s%s%s FLEX_MATCHED(%d)\n", leadPattern(pattern.lead), quoted(pattern.literal.first).c_str(),
                    gap.c_str(), quoted(pattern.literal.second).c_str(), tailPattern(pattern.tail), pattern.number);
    }
    std::puts(".  FLEX_SKIPPED\n"
              "\\n FLEX_SKIPPED\n"
              "%%\n"
              "void flexScanText(const char* text, std::size_t length) {\n"
              "    YY_BUFFER_STATE buffer = yy_scan_bytes(text, static_cast<int>(length));\n"
              "    yylex();\n"
              "    yy_delete_buffer(buffer);\n"
              "}\n"
              "void flexScanFile(std::FILE* file) {\n"
              "    yyrestart(file);\n"
              "    yylex();\n"
              "}");
    return 0;
}
