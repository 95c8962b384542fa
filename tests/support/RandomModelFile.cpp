#include "support/RandomModelFile.h"

#include <array>

namespace {

constexpr std::array classNames{"A", "B", "C", "D", "Order", "Line"};
constexpr std::array unknownNames{"Actor", "Later", "Sales::Order"};
constexpr std::array memberNames{"id", "i", "id2", "name", "key", ""};
constexpr std::array typeNames{"int",    "char[20]", "char*", "VARCHAR2(40)", "NUMBER(10,2)", "Order", "Colour",
                               "double", "boolean",  "void",  "DATE",         "Unknown",      "Actor", "int[3]"};
constexpr std::array classObjects{"Class",         "Class",    "Class", "Parameterized_Class", "Instantiated_Class",
                                  "Class_Utility", "Metaclass"};
constexpr std::array containments{"By Value", "By Reference", "Unspecified"};
constexpr std::array visibilities{"Public", "Protected", "Private", "Implementation"};
constexpr std::array cardinalities{"0..n", "1..n", "1..1", "n", "0..0"};
constexpr std::array associationNames{"", "$UNNAMED$1", "owns", "owns", "has"};
constexpr std::array relationships{"Inheritance_Relationship", "Realize_Relationship", "Uses_Relationship"};
constexpr std::array relationshipViews{"InheritView", "RealizeView", "UsesView", "AttachView"};

} // namespace

RandomModelFile::RandomModelFile(unsigned int seed, Kind kind) : isSound_(kind == Kind::sound), random_(seed) {
    if (oneIn(3)) {
        writeCategory("Use Case View"); // of which nothing is imported
        associationCount_ = 0;
    }
    writeCategory("Logical View");
}

void RandomModelFile::times(int most, void (RandomModelFile::*write)()) {
    for (int left = below(most + 1); left > 0; --left) {
        (this->*write)();
    }
}

void RandomModelFile::line(const std::string& text) {
    text_ += std::string(static_cast<std::size_t>(depth_), '\t') + text + "\n";
}

void RandomModelFile::open(const std::string& text) {
    line(text);
    ++depth_;
}

void RandomModelFile::close() {
    --depth_;
    line(")");
}

void RandomModelFile::property(const std::string& keyword, const std::string& value) {
    line(keyword + " \t\"" + value + "\"");
}

void RandomModelFile::reference(const std::string& keyword, int viewNumber) {
    line(keyword + " \t@" + std::to_string(viewNumber));
}

std::string RandomModelFile::anyClassName() {
    const std::string name = oneIn(6) ? anyOf(unknownNames) : anyOf(classNames);
    return oneIn(2) ? "Logical View::P::" + name : name;
}

int RandomModelFile::anyViewNumber() {
    return firstView_ + below(views_ - firstView_ + 1);
}

void RandomModelFile::writeCategory(const std::string& name) {
    open("(object Class_Category \"" + name + "\"");
    property("quid", std::to_string(++quids_));
    open("logical_models \t(list unit_reference_list");
    times(8, &RandomModelFile::writeModelElement);
    // A diagram stays current behind its package, and no role is bound while there is one.
    times(depth_ < 6 ? 2 : 0, &RandomModelFile::writeNestedCategory);
    if (!isSound_) {
        times(4, &RandomModelFile::writeModelElement);
    }
    close();
    open("logical_presentations \t(list unit_reference_list");
    times(2, &RandomModelFile::writeDiagram);
    close();
    close();
}

void RandomModelFile::writeNestedCategory() {
    writeCategory("P" + std::to_string(++categories_));
}

void RandomModelFile::writeModelElement() {
    constexpr std::array writers{&RandomModelFile::writeClass, &RandomModelFile::writeClass,
                                 &RandomModelFile::writeAssociation, &RandomModelFile::writeAssociation,
                                 &RandomModelFile::writeEnumeration};
    (this->*writers[static_cast<std::size_t>(below(writers.size()))])();
}

void RandomModelFile::writeClass() {
    open(std::string("(object ") + anyOf(classObjects) + " \"" + anyClassName() + "\"");
    property("quid", std::to_string(++quids_));
    if (oneIn(3)) {
        property("stereotype", oneIn(2) ? "Interface" : "entity");
    }
    times(2, &RandomModelFile::writeParameter);
    times(4, &RandomModelFile::writeAttribute);
    times(2, &RandomModelFile::writeOperation);
    times(2, &RandomModelFile::writeRelationship);
    close();
}

void RandomModelFile::writeEnumeration() {
    // A class that becomes a type takes the associations to it along.
    const std::string name = isSound_ || oneIn(2) ? "Colour" : anyClassName();
    open("(object Class \"" + name + "\"");
    property("(value Text", oneIn(4) ? "{Red}" : "{Red,Green=2,Blue='b'}");
    close();
}

void RandomModelFile::writeAttribute() {
    open(std::string("(object ClassAttribute \"") + anyOf(memberNames) + "\"");
    if (!oneIn(3)) {
        property("type", anyOf(typeNames));
    }
    property("initv", "0");
    property("exportControl", anyOf(visibilities));
    property("Containment", anyOf(containments));
    close();
}

void RandomModelFile::writeOperation() {
    open(std::string("(object Operation \"") + anyOf(memberNames) + "\"");
    times(2, &RandomModelFile::writeParameter);
    if (!oneIn(3)) {
        property("result", anyOf(typeNames));
    }
    close();
}

void RandomModelFile::writeParameter() {
    open(std::string("(object Parameter \"") + anyOf(memberNames) + "\"");
    if (!oneIn(3)) {
        property("type", anyOf(typeNames));
    }
    close();
}

void RandomModelFile::writeRelationship() {
    open(std::string("(object ") + anyOf(relationships));
    property("label", "relates");
    if (!oneIn(5)) {
        property("supplier", anyClassName());
    }
    close();
}

void RandomModelFile::writeAssociation() {
    open(std::string("(object Association \"") + anyOf(associationNames) + "\"");
    property("quid", std::to_string(oneIn(8) ? below(quids_ + 1) : ++quids_));
    if (isSound_) {
        writeRole();
        writeRole();
    } else {
        times(3, &RandomModelFile::writeRole);
    }
    const bool hasClass = oneIn(4);
    if (hasClass) {
        property("AssociationClass", anyClassName());
    }
    associationCount_ += hasClass ? 3 : 1;
    close();
}

void RandomModelFile::writeRole() {
    open(std::string("(object Role \"") + anyOf(associationNames) + "\"");
    if (isSound_ || !oneIn(5)) {
        property("supplier", anyClassName());
    }
    if (oneIn(3)) {
        open("keys \t(list class_attribute_list");
        times(3, &RandomModelFile::writeAttribute);
        close();
    }
    line(std::string("client_cardinality \t(value cardinality \"") + anyOf(cardinalities) + "\")");
    if (!isSound_ && oneIn(4)) {
        line("is_aggregate \tTRUE");
    }
    close();
}

void RandomModelFile::writeDiagram() {
    open("(object ClassDiagram \"Main\"");
    firstView_ = views_;
    times(15, &RandomModelFile::writeView);
    close();
}

void RandomModelFile::writeView() {
    constexpr std::array writers{&RandomModelFile::writeClassView, &RandomModelFile::writeClassView,
                                 &RandomModelFile::writeRelationshipView, &RandomModelFile::writeAssociationView,
                                 &RandomModelFile::writeNote};
    (this->*writers[static_cast<std::size_t>(below(writers.size()))])();
}

void RandomModelFile::writeClassView() {
    const std::string number = std::to_string(oneIn(6) ? anyViewNumber() : ++views_);
    open("(object ClassView \"Class\" \"Logical View::" + std::string(anyOf(classNames)) + "\" @" + number);
    close();
}

void RandomModelFile::writeRelationshipView() {
    open(std::string("(object ") + anyOf(relationshipViews) + " \"\" @" + std::to_string(++views_));
    reference("client", anyViewNumber());
    reference("supplier", anyViewNumber());
    close();
}

void RandomModelFile::writeAssociationView() {
    open(std::string("(object AssociationViewNew \"") + anyOf(associationNames) + "\" @" + std::to_string(++views_));
    property("quidu", std::to_string(below(quids_ + 20)));
    open("(object RoleView \"\" @" + std::to_string(++views_));
    reference("Parent_View", views_ - 1);
    reference("supplier", anyViewNumber());
    close();
    close();
}

void RandomModelFile::writeNote() {
    open("(object NoteView @" + std::to_string(++views_));
    reference("Parent_View", views_);
    property("label", "note " + std::to_string(views_));
    close();
}
