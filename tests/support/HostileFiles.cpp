#include "support/HostileFiles.h"

#include "support/ImportedModel.h"

#include <ostream>
#include <string_view>
#include <vector>

namespace {

constexpr std::string_view numberMark = "{n}";

std::string barLine() {
    return "|" + std::string(10'240, 'z') + "\n";
}

std::vector<HostileFile> makeFiles() {
    const std::string twoClasses = "(object Class \"A\")\n(object Class \"B\")\n";
    const std::string ends = "\n (object Role \"a\"\n supplier \"Logical View::A\")\n"
                             " (object Role \"b\"\n supplier \"Logical View::B\")\n";
    const std::string diagram = "(object ClassDiagram \"D\"\n";
    // Beside what is named below a model holds itself, its origin and the package of the logical view.
    return {
        {"nested categories", "", "(object Class_Category \"P{n}\"\n", "", 100'000, 20'000, 1, 3},
        {"nested and closed categories", "", "(object Class_Category \"P{n}\"\n logical_presentations x\n", "", 100'000,
         2'000, 1, 3},
        {"attributes of one name", "(object Class \"A\"\n", "(object ClassAttribute \"same\"\ntype \"int\")\n", "",
         100'000, 2'000, 0, 7},
        {"attributes of many names", "(object Class \"A\"\n", "(object ClassAttribute \"a{n}\"\ntype \"T{n}\")\n", "",
         100'000, 1'000, 2, 5},
        {"parameters", "(object Class \"A\"\n(object Operation \"f\"\n", " (object Parameter \"p\"\ntype \"int\")\n",
         "", 100'000, 1'000, 1, 7},
        {"literals", "(object Class \"A\"\n (value Text \"{", "L{n},",
         "}\")\n(object Class \"B\"\n(object ClassAttribute \"a\"\ntype \"A\")\n", 1'000'000, 2'000, 1, 8},
        {"notes at one class", "(object Class \"A\")\n" + diagram + "(object ClassView \"Class\" \"A\" @1)\n",
         " NoteView @{n}\n Parent_View @{n}\n label \"n{n}\")\n(object AttachView \"\" @1\n client @{n}\n supplier "
         "@1)\n",
         "", 100'000, 1'000, 1, 5},
        {"notes whose numbers collide", diagram, " NoteView @1\n Parent_View @{n}07897\n label \"n\"\n", "", 100'000,
         2'000, 0, 4},
        {"class views before their classes", diagram, "(object ClassView \"Class\" \"C{n}\" @{n})\n", "", 1'000'000,
         5'000, 1, 5},
        {"association views before their associations", diagram,
         "(object AssociationViewNew \"a\" @{n}\n quidu \"{n}\")\n", "", 300'000, 5'000, 0, 4},
        {"one class on many diagrams", "(object Class \"A\")\n",
         "(object ClassDiagram \"D{n}\"\n(object ClassView \"Class\" \"A\" @1)\n", "", 100'000, 1'000, 1, 4},
        {"suppliers that are never defined", "(object Class \"A\"\n",
         "(object Inheritance_Relationship\n supplier \"S{n}\")\n", "", 300'000, 2'000, 1, 5},
        {"relationships between one pair", twoClasses, "(object Uses_Relationship\n supplier \"A\")\n", "", 300'000,
         1'000, 1, 5},
        {"associations between one pair", twoClasses, " (object Association \"x\"\n quid \"{n}\"" + ends, "", 100'000,
         1'000, 3, 5},
        {"association classes", twoClasses, " (object Association \"x\"" + ends + " AssociationClass \"L{n}\"\n", "",
         100'000, 1'000, 10, 6},
        {"roles of one association", "(object Class \"A\")\n (object Association \"x\"\n",
         " (object Role \"r\"\n supplier \"A\")\n is_aggregate TRUE\n", "", 100'000, 1'000, 1, 5},
        {"qualifiers of one role", twoClasses + " (object Association \"x\"" + ends + " keys\n",
         "(object ClassAttribute \"k{n}\"\ntype \"int\")\n", "", 100'000, 1'000, 2, 12},
        {"a category's name of one line", "(object Class_Category \"", "x", "\"\n", 200'000'000, 2'000'000, 0, 4},
        {"a class's name of 50 MB", "(object Class \"", "x", "\"\n", 50'000'000, 2'000'000, 0, 4},
        {"a line of nothing", "", "(", "", 200'000'000, 2'000'000, 0, 3},
        {"a view that never closes its quote", diagram + "(object ClassView \"Class\" \"", "y", "", 200'000'000,
         2'000'000, 0, 4},
        {"views that never close their quote", diagram, "(object ClassView \"Cl ", "", 10'000'000, 20'000, 0, 4},
        {"quotes", diagram + " label ", "\"", "", 200'000'000, 2'000'000, 0, 4},
        {"text lines of 10 KB", "(object Class \"A\"\n documentation \t\n", barLine(), "x", 10'000, 100, 0, 4},
        {"NULs", "", std::string(1, '\0'), "", 200'000'000, 100'000, 0, 3},
        {"lines that no line feed ends", "", "\r(object Class \"A\"\r", "", 10'000'000, 1'000, 0, 4},
        {"documentation lines", "(object Class \"A\"\n", " documentation \"line {n}\"\n", "", 1'000'000, 5'000, 0, 4},
    };
}

} // namespace

std::span<const HostileFile> hostileFiles() {
    static const std::vector<HostileFile> files = makeFiles();
    return files;
}

void writeHostileFile(const HostileFile& file, long times, std::ostream& stream) {
    stream << petalHeader << "(object Class_Category \"Logical View\"\n" << file.start;
    for (long number = 0; number < times; ++number) {
        std::string_view rest(file.piece);
        for (std::size_t mark = rest.find(numberMark); mark != std::string_view::npos; mark = rest.find(numberMark)) {
            stream << rest.substr(0, mark) << number;
            rest.remove_prefix(mark + numberMark.size());
        }
        stream << rest;
    }
    stream << file.end;
}
