#pragma once

#include "host/model/links/KelPointerHash.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <tsl/robin_map.h>
#include <utility>
#include <vector>

class KelAssociation;
class KelAssociationRole;
class KelClass;
class KelDesignPackage;
class KelModel;
class KelModelElement;

namespace exporter {
class Omissions;
}

/// Class diagrams as text: one intermediate form, of which each format is a syntax.
namespace exporter::graph {

/// The symbol at an end of an edge.
enum class Tip : std::uint8_t { none, arrow, triangle, diamond, filledDiamond };

struct PairHash {
    std::size_t operator()(const std::pair<const KelClass*, const KelClass*>& pair) const {
        const KelPointerHash hash;
        return hash(pair.first) * 31 + hash(pair.second);
    }
};

/// A relationship between two classes. Drawings put the first class above the second.
struct Edge {
    const KelClass* first;
    const KelClass* second;
    Tip firstTip = Tip::none;
    Tip secondTip = Tip::none;
    bool isDashed = false;
    const KelModelElement* said;                   ///< the relationship; a generalization may say several edges
    const KelAssociationRole* firstRole = nullptr; ///< of an association
    const KelAssociationRole* secondRole = nullptr;
};

/// A package as the cluster of its classes.
struct Cluster {
    static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();
    static constexpr std::uint32_t deepest = 10; // PlantUML 1.2020.2 takes twice the memory for each level

    const KelDesignPackage* package;
    std::uint32_t parent; ///< none for one in the model
    std::uint32_t around; ///< the cluster that it is drawn in: its parent, or the one above with the depth `deepest`
    std::uint32_t depth;  ///< of the cluster as it is drawn
};

/// Classes, packages and edges of a model, which must outlive it and not change. Reading it from several threads is
/// safe. Takes time and memory proportional to the model.
class Graph {
public:
    /// Adds relationships that are no edges to the omissions.
    Graph(const KelModel& model, Omissions& omissions);

    /// In the order of the JSON document, so that the classes of a package follow those of the packages in it.
    [[nodiscard]] std::span<const KelClass* const> getClasses() const { return classes_; }
    [[nodiscard]] std::uint32_t indexOf(const KelClass& one) const { return indexes_.at(&one); }
    /// Whether the class is part of the model.
    [[nodiscard]] bool holds(const KelClass& one) const { return indexes_.contains(&one); }
    /// The packages, each before those in it.
    [[nodiscard]] std::span<const Cluster> getClusters() const { return clusters_; }
    /// The cluster of the class with this index.
    [[nodiscard]] std::uint32_t clusterOf(std::uint32_t classIndex) const { return clusterOf_[classIndex]; }
    [[nodiscard]] std::span<const Edge> getEdges() const { return edges_; }
    /// The edges that a relationship says.
    [[nodiscard]] std::span<const Edge> edgesOf(const KelModelElement& said) const;
    /// A name for the class in a syntax: letters and digits of ASCII. It changes when the class or a package around it
    /// is renamed, and not when other classes come or go.
    [[nodiscard]] const std::string& idOf(std::uint32_t classIndex) const { return ids_[classIndex]; }
    [[nodiscard]] const std::string& idOf(const KelClass& one) const { return idOf(indexOf(one)); }

private:
    class Builder;

    std::vector<const KelClass*> classes_;
    std::vector<std::uint32_t> clusterOf_;
    std::vector<std::string> ids_;
    std::vector<Cluster> clusters_;
    std::vector<Edge> edges_;
    tsl::robin_map<const KelClass*, std::uint32_t, KelPointerHash> indexes_;
    tsl::robin_map<const KelModelElement*, std::pair<std::uint32_t, std::uint32_t>, KelPointerHash> said_; // first, end
};

} // namespace exporter::graph
