#include "export/graph/Graph.h"

#include "export/ElementIds.h"
#include "export/Omissions.h"
#include "export/asItsClass.h"
#include "export/modelWalk.h"
#include "export/relationships.h"

#include <tsl/robin_set.h>

namespace exporter::graph {

namespace {

constexpr Omission withoutTwoEnds{"association without two classes", "associations without two classes",
                                  "an edge has two ends"};
constexpr Omission withoutClasses{"relation without two classes", "relations without two classes",
                                  "an edge has two ends"};
constexpr Omission ofItself{"generalization of a class to itself", "generalizations of a class to itself",
                            "a class does not inherit from itself"};
constexpr Omission repeated{"repeated generalization", "repeated generalizations", "another one says the same"};
constexpr Omission hiddenArrow{"navigability towards a whole", "navigabilities towards a whole",
                               "the end has one symbol, the diamond"};

/// The tips at the ends of an association: the diamond of the whole, and an arrow if only one end is navigable.
std::pair<Tip, Tip> tipsOf(const KelAssociation& association, std::size_t first, Omissions& omissions) {
    const std::size_t second = 1 - first;
    const auto roles = association.associationRoles();
    const auto tipOf = [&](std::size_t own, std::size_t other) {
        const std::optional<std::size_t> whole = wholeOf(association);
        const bool isTarget = roles[static_cast<int>(own)]->isNavigable && !roles[static_cast<int>(other)]->isNavigable;
        if (whole == own) {
            omissions.add(hiddenArrow, static_cast<std::uint64_t>(isTarget));
            return aggregationOf(association, other) == Aggregation::composite ? Tip::filledDiamond : Tip::diamond;
        }
        return isTarget ? Tip::arrow : Tip::none;
    };
    return {tipOf(first, second), tipOf(second, first)};
}

/// The role whose class is drawn above: the whole's, else the source's.
std::size_t firstRoleOf(const KelAssociation& association) {
    const auto roles = association.associationRoles();
    return wholeOf(association).value_or(!roles[0]->isSource && roles[1]->isSource ? 1 : 0);
}

std::uint64_t selfPairs(const KelGeneralization& generalization) {
    std::uint64_t count = 0;
    for (const KelClass* subtype : generalization.subtypeClasses()) {
        count += static_cast<std::uint64_t>(generalization.supertypeClasses().holds(*subtype));
    }
    return count;
}

} // namespace

class Graph::Builder final : private ModelVisitor {
public:
    Builder(Graph& graph, Omissions& omissions) : graph_(graph), omissions_(omissions) {}

    void build(const KelModel& model) {
        walkModel(model, documentParts, *this);
        giveIds(model);
        for (const KelModelElement* element : relationships_) {
            const auto first = static_cast<std::uint32_t>(graph_.edges_.size());
            asItsClass(*element, [this](const auto& one) { addEdges(one); });
            graph_.said_.try_emplace(element, first, static_cast<std::uint32_t>(graph_.edges_.size()));
        }
    }

private:
    void enter(const KelObject& object) override {
        if (object.isInstanceOf(KelElementType::designPackage)) {
            open_.push_back(static_cast<std::uint32_t>(graph_.clusters_.size()));
            graph_.clusters_.push_back(clusterOf(static_cast<const KelDesignPackage&>(object)));
        } else if (object.elementType == KelElementType::classObject) {
            const auto& one = static_cast<const KelClass&>(object);
            graph_.indexes_.try_emplace(&one, static_cast<std::uint32_t>(graph_.classes_.size()));
            graph_.classes_.push_back(&one);
            graph_.clusterOf_.push_back(open_.empty() ? Cluster::none : open_.back());
        } else if (object.isInstanceOf(KelElementType::modelElement)) {
            relationships_.push_back(static_cast<const KelModelElement*>(&object));
        }
    }
    void leave(const KelObject& object) override {
        if (object.isInstanceOf(KelElementType::designPackage)) {
            open_.pop_back();
        }
    }

    [[nodiscard]] Cluster clusterOf(const KelDesignPackage& package) const {
        const std::size_t above = open_.size() - 1; // `open_` holds the package itself
        if (above == 0) {
            return {&package, Cluster::none, Cluster::none, 0};
        }
        const std::uint32_t parent = open_[above - 1];
        const Cluster& around = graph_.clusters_[parent];
        return around.depth < Cluster::deepest ? Cluster{&package, parent, parent, around.depth + 1}
                                               : Cluster{&package, parent, around.around, around.depth};
    }

    void giveIds(const KelModel& model) {
        constexpr std::size_t shortLength = 8;
        const ElementIds ids(model, nullptr, ElementIds::Of::packagesAndClasses, ElementIds::Find::byNumber);
        tsl::robin_set<std::string_view> taken;
        taken.reserve(graph_.classes_.size());
        graph_.ids_.reserve(graph_.classes_.size());
        for (const KelClass* one : graph_.classes_) {
            const std::string_view hash = ids.viewOf(*one).substr(1); // after "n"
            const bool isNew = taken.insert(hash.substr(0, shortLength)).second;
            graph_.ids_.emplace_back("c").append(isNew ? hash.substr(0, shortLength) : hash);
        }
    }

    [[nodiscard]] bool areShown(const KelClass* first, const KelClass* second) const {
        return first != nullptr && second != nullptr && graph_.holds(*first) && graph_.holds(*second);
    }
    void addEdges(const KelAssociation& association) {
        const auto roles = association.associationRoles();
        if (roles.count() != 2 || !areShown(roles[0]->getAssociatedClass(), roles[1]->getAssociatedClass())) {
            omissions_.add(withoutTwoEnds);
            return;
        }
        const std::size_t first = firstRoleOf(association);
        const KelAssociationRole* one = roles[static_cast<int>(first)];
        const KelAssociationRole* other = roles[static_cast<int>(1 - first)];
        const auto [firstTip, secondTip] = tipsOf(association, first, omissions_);
        graph_.edges_.push_back({.first = one->getAssociatedClass(),
                                 .second = other->getAssociatedClass(),
                                 .firstTip = firstTip,
                                 .secondTip = secondTip,
                                 .said = &association,
                                 .firstRole = one,
                                 .secondRole = other});
    }
    void addEdges(const KelGeneralization& generalization) {
        const std::vector<Inheritance> pairs = inheritancesOf(generalization);
        const std::uint64_t selves = selfPairs(generalization);
        omissions_.add(ofItself, selves);
        omissions_.add(withoutClasses, static_cast<std::uint64_t>(pairs.empty() && selves == 0));
        for (const Inheritance& pair : pairs) {
            if (areShown(pair.subtype, pair.supertype)) {
                const bool isNew = pairs_.insert({pair.subtype, pair.supertype}).second;
                omissions_.add(repeated, static_cast<std::uint64_t>(!isNew));
                graph_.edges_.push_back({.first = pair.supertype,
                                         .second = pair.subtype,
                                         .firstTip = Tip::triangle,
                                         .said = &generalization});
            }
        }
    }
    void addEdges(const KelRealization& realization) {
        addDashed(realization, realization.getSpecificationClass(), realization.getRealizationClass(), Tip::triangle,
                  Tip::none);
    }
    void addEdges(const KelDependency& dependency) {
        addDashed(dependency, dependency.getClientClass(), dependency.getSupplierClass(), Tip::none, Tip::arrow);
    }
    void addEdges(const KelElement& /*element*/) {}

    void addDashed(const KelModelElement& said, const KelClass* first, const KelClass* second, Tip firstTip,
                   Tip secondTip) {
        if (areShown(first, second)) {
            graph_.edges_.push_back({.first = first,
                                     .second = second,
                                     .firstTip = firstTip,
                                     .secondTip = secondTip,
                                     .isDashed = true,
                                     .said = &said});
        } else {
            omissions_.add(withoutClasses);
        }
    }

    Graph& graph_;
    Omissions& omissions_;
    std::vector<std::uint32_t> open_; // packages around, as clusters
    std::vector<const KelModelElement*> relationships_;
    tsl::robin_set<std::pair<const KelClass*, const KelClass*>, PairHash> pairs_; // of generalizations
};

Graph::Graph(const KelModel& model, Omissions& omissions) {
    Builder(*this, omissions).build(model);
}

std::span<const Edge> Graph::edgesOf(const KelModelElement& said) const {
    const auto found = said_.find(&said);
    if (found == said_.end()) {
        return {};
    }
    const auto [first, end] = found->second;
    return std::span(edges_).subspan(first, end - first);
}

} // namespace exporter::graph
