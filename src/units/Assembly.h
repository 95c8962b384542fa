#pragma once

#include "units/PieceMap.h"
#include "units/RootPackage.h"
#include "units/UnitTree.h"

#include <functional>
#include <optional>
#include <string_view>

namespace units {

/// A model as one text, in which each reference to a unit is replaced by the unit's content. Owns no file; the files
/// must not change between the reading of `tree` and `write`. Time is proportional to the files.
class Assembly {
public:
    /// `tree` must live as long.
    explicit Assembly(const UnitTree& tree) : tree_(&tree), renamedRoot_(findRenamedRoot(tree)) {}

    /// Whether the text differs from that of the model's own file.
    [[nodiscard]] bool differs() const { return isWrapped() || renamedRoot_ || !tree_->files[0].units.empty(); }
    /// The root of the packages if its name is not "Logical View". In the text its name is "Logical View", also at the
    /// start of the paths that name classes.
    [[nodiscard]] const std::optional<RenamedRoot>& getRenamedRoot() const { return renamedRoot_; }
    /// Whether the file is a package without a Design. The text puts such a package into a logical view.
    [[nodiscard]] bool isWrapped() const;
    /// Whether the files have different encodings.
    [[nodiscard]] bool isMixed() const;

    enum class Bytes { asTheyAre, utf8IfMixed };
    /// Passes the text to `write`, in order and in parts, and returns the origin of its bytes. With `utf8IfMixed`, the
    /// text is in UTF-8 if `isMixed`. A package whose unit is missing is kept and closed, so that the following objects
    /// do not become its content. Each line of converted text is a copied piece up to its first byte that is not ASCII,
    /// and a converted piece after that. Throws `std::system_error` when a file cannot be read, `std::bad_alloc`, and
    /// what `write` throws.
    PieceMap write(Bytes bytes, const std::function<void(std::string_view)>& write) const;

private:
    const UnitTree* tree_;
    std::optional<RenamedRoot> renamedRoot_;
};

} // namespace units
