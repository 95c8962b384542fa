#pragma once

#include <iosfwd>
#include <span>
#include <string>

/// A model file that is hostile: a logical view with one piece repeated without end.
struct HostileFile {
    const char* name;
    std::string start; // after the header of the category "Logical View"
    std::string piece; // "{n}" in it stands for the number of pieces before it
    std::string end;
    long times;           // how often the piece occurs in a file of full size
    long testTimes;       // ... and in a file to be tried on the way
    long objectsPerPiece; // of the model, all owned objects counted
    long otherObjects;    // of the model beside those
};

/// All such files.
[[nodiscard]] std::span<const HostileFile> hostileFiles();

/// Writes the whole file with so many pieces. Holds no more than a piece in memory.
void writeHostileFile(const HostileFile& file, long times, std::ostream& stream);
