#pragma once

#include "units/PieceMap.h"
#include "units/RootPackage.h"
#include "units/UnitTree.h"

#include <functional>
#include <optional>
#include <string_view>

namespace units {

/// What a model is like as one text, with the contents of its units in their places.
class Assembly {
public:
    /// `tree` must live as long.
    explicit Assembly(const UnitTree& tree) : tree_(&tree), renamedRoot_(findRenamedRoot(tree)) {}

    /// Whether the text differs from that of the model's own file.
    [[nodiscard]] bool differs() const { return isWrapped() || renamedRoot_ || !tree_->files[0].units.empty(); }
    /// The root of the packages when it has another name than "Logical View". It has that name in the text, and so has
    /// the root of each path by which a class is named.
    [[nodiscard]] const std::optional<RenamedRoot>& getRenamedRoot() const { return renamedRoot_; }
    /// Whether the file is a package by itself, which the text puts into a logical view.
    [[nodiscard]] bool isWrapped() const;
    /// Whether the files are in several encodings. If so, the text is in UTF-8, unless the bytes are to stay.
    [[nodiscard]] bool isMixed() const;

    enum class Bytes { asTheyAre, utf8IfMixed };
    /// Hands the text to `write`, one part after the other, in order, and returns where its bytes come from. A package
    /// whose unit is missing stays, closed, so that what follows does not become its content. Of text that is brought
    /// to UTF-8 each line that is not all ASCII is copied as far as it is, and the rest of the line is one piece.
    /// Throws `std::system_error` when a file cannot be read, `std::bad_alloc`, and what `write` throws.
    PieceMap write(Bytes bytes, const std::function<void(std::string_view)>& write) const;

private:
    const UnitTree* tree_;
    std::optional<RenamedRoot> renamedRoot_;
};

} // namespace units
