#pragma once

#include <random>
#include <string>
#include <string_view>

/// A random well-formed model file, the same for the same seed.
///
/// Nested packages, references to later objects or to none, names and quids that collide, repeated views,
/// qualifiers, association classes, enumerations, relationships, notes.
class RandomModelFile {
public:
    enum class Kind {
        wild,  // roles may lack classes, diagrams may come before the classes they show
        sound, // every association is whole and is kept
    };

    RandomModelFile(unsigned int seed, Kind kind);

    /// The file after its header.
    [[nodiscard]] const std::string& getBody() const { return text_; }
    /// How many associations the model of a sound file has.
    [[nodiscard]] int getAssociationCount() const { return associationCount_; }

private:
    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned int>(bound)); }
    void expand(std::string_view text);
    void expandRule(std::string_view name);
    void put(char character);
    int number(char letter);

    const bool isSound_;
    std::mt19937 random_;
    std::string text_;
    int depth_ = 0; // of parentheses
    int packages_ = 0;
    int quids_ = 0;
    int views_ = 0;
    int firstView_ = 0; // of the current diagram
    int associationCount_ = 0;
};
