#pragma once

#include <random>
#include <string>
#include <vector>

/// A random well-formed model file, the same for the same seed.
///
/// Nested packages, references to what comes later or never, names and quids that collide, repeated views,
/// qualifiers, association classes, enumerations, relationships, notes.
class RandomModelFile {
public:
    enum class Kind {
        wild,  // roles may lack classes, diagrams may stand before what they show
        sound, // every association is whole and is kept
    };

    RandomModelFile(unsigned int seed, Kind kind);

    /// The file behind its header.
    [[nodiscard]] const std::string& getBody() const { return text_; }
    /// How many associations the model of a sound file has.
    [[nodiscard]] int getAssociationCount() const { return associationCount_; }

private:
    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned int>(bound)); }
    bool oneIn(int cases) { return below(cases) == 0; }
    void times(int most, void (RandomModelFile::*write)());
    template <class Choices>
    const char* anyOf(const Choices& choices) {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }

    void line(const std::string& text);
    void open(const std::string& text);
    void close();
    void property(const std::string& keyword, const std::string& value);
    void reference(const std::string& keyword, int viewNumber);

    std::string anyClassName();
    int anyViewNumber();

    void writeCategory(const std::string& name);
    void writeNestedCategory();
    void writeModelElement();
    void writeClass();
    void writeEnumeration();
    void writeAttribute();
    void writeOperation();
    void writeParameter();
    void writeRelationship();
    void writeAssociation();
    void writeRole();
    void writeDiagram();
    void writeView();
    void writeClassView();
    void writeRelationshipView();
    void writeAssociationView();
    void writeNote();

    const bool isSound_;
    std::mt19937 random_;
    std::string text_;
    int depth_ = 0;
    int categories_ = 0;
    int quids_ = 0;
    int views_ = 0;
    int firstView_ = 0; // of the current diagram
    int associationCount_ = 0;
};
