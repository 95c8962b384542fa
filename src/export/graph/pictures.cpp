#include "export/graph/pictures.h"

#include "export/ElementIds.h"
#include "export/Exporter.h"
#include "export/Omissions.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelModel.h"
#include "text/utf8.h"

#include <algorithm>
#include <tsl/robin_set.h>
#include <utility>

namespace exporter::graph {

namespace {

constexpr Omission emptyDiagram{"class diagram without classes", "class diagrams without classes",
                                "there is nothing to draw"};
constexpr Omission diagram{"class diagram", "class diagrams", "the scope is another one"};
constexpr Omission hiddenClass{"class on no diagram", "classes on no diagram", "the scope is the diagrams"};
constexpr Omission hiddenEdge{"relationship on no diagram", "relationships on no diagram", "the scope is the diagrams"};

/// Collects the edges of a picture.
class EdgeCollector {
public:
    explicit EdgeCollector(Picture& picture) : picture_(picture) {}
    void add(const Edge& edge) {
        const bool isGeneralization = edge.firstTip == Tip::triangle && !edge.isDashed;
        if (!isGeneralization || pairs_.emplace(edge.first, edge.second).second) {
            picture_.edges.push_back(&edge);
        }
    }

private:
    Picture& picture_;
    tsl::robin_set<std::pair<const KelClass*, const KelClass*>, PairHash> pairs_; // of generalizations
};

/// The names that the model has for what an option may pick, for people.
std::string listOf(const std::vector<std::string>& names) {
    constexpr std::size_t most = 20;
    std::string list;
    for (std::size_t at = 0; at < std::min(names.size(), most); ++at) {
        list += (at == 0 ? "'" : ", '") + names[at] + "'";
    }
    return names.size() > most ? list + " and " + std::to_string(names.size() - most) + " more" : list;
}

bool isCalled(const KelObject& element, std::string_view wanted) {
    const std::string simple = text::repairedUtf8(element.getName().view());
    return simple == wanted || (wanted.ends_with("::" + simple) && qualifiedName(element) == wanted);
}

/// Which of the elements have one of the names; all if there are no names. Throws `WrongOption` for a name that none
/// has.
template <class Element>
std::vector<bool> picked(const std::vector<const Element*>& elements, const std::vector<std::string>& names,
                         std::string_view kind) {
    std::vector<bool> are(elements.size(), names.empty());
    for (const std::string& name : names) {
        bool isKnown = false;
        for (std::size_t at = 0; at < elements.size(); ++at) {
            if (isCalled(*elements[at], name)) {
                are[at] = isKnown = true;
            }
        }
        if (!isKnown) {
            std::vector<std::string> known;
            std::ranges::transform(elements, std::back_inserter(known),
                                   [](const Element* one) { return qualifiedName(*one); });
            throw WrongOption(std::string("there is no ").append(kind).append(" '") + name + "'; " +
                              (known.empty()
                                   ? "the model has none"
                                   : std::string("the names of ").append(kind).append("s are ") + listOf(known)));
        }
    }
    return are;
}

class Selection {
public:
    Selection(const Graph& graph, const ExportContext& context, std::string_view usualScope)
        : graph_(graph), context_(context), packages_(context.options.all("package")),
          diagrams_(context.options.all("diagram")), scope_(context.options.get("scope")) {
        if (scope_.empty()) {
            scope_ = diagrams_.empty() ? usualScope : "diagrams";
        }
        if (!diagrams_.empty() && scope_ != "diagrams") {
            throw WrongOption("'diagram' picks class diagrams, so the scope must be 'diagrams'");
        }
        pickClusters();
    }

    std::vector<Picture> make() {
        if (scope_ == "diagrams") {
            std::vector<Picture> pictures = ofDiagrams();
            if (!pictures.empty()) {
                return pictures;
            }
            scope_ = "model";
        } else if (packages_.empty()) {
            context_.omissions.add(diagram, allDiagrams().size());
        }
        std::vector<Picture> pictures = ofPackages(scope_ == "packages");
        if (pictures.empty()) { // no package has a class
            pictures.push_back(named(context_.model));
        }
        return pictures;
    }

private:
    void pickClusters() {
        std::vector<const KelDesignPackage*> packages;
        std::ranges::transform(graph_.getClusters(), std::back_inserter(packages), &Cluster::package);
        isPicked_ = picked(packages, packages_, "package");
        for (std::size_t at = 0; at < isPicked_.size(); ++at) { // a package comes after the one that it is in
            const std::uint32_t parent = graph_.getClusters()[at].parent;
            isPicked_[at] = isPicked_[at] || (parent != Cluster::none && isPicked_[parent]);
        }
    }

    [[nodiscard]] bool isPicked(std::uint32_t cluster) const {
        return cluster != Cluster::none ? isPicked_[cluster] : packages_.empty();
    }

    [[nodiscard]] std::vector<const KelClassDiagram*> allDiagrams() const {
        std::vector<const KelClassDiagram*> all;
        for (std::uint32_t at = 0; at < graph_.getClusters().size(); ++at) {
            for (const KelDiagram* one : graph_.getClusters()[at].package->diagrams()) {
                if (isPicked(at) && one->elementType == KelElementType::classDiagram) {
                    all.push_back(static_cast<const KelClassDiagram*>(one));
                }
            }
        }
        return all;
    }

    [[nodiscard]] static Picture named(const KelObject& element) {
        Picture picture;
        picture.name = text::repairedUtf8(element.getName().view());
        if (element.elementType != KelElementType::model) {
            picture.qualifiedName = qualifiedName(element);
            picture.notesOf = static_cast<const KelElement*>(&element);
        }
        return picture;
    }

    std::vector<Picture> ofDiagrams() {
        const std::vector<const KelClassDiagram*> all = allDiagrams();
        const std::vector<bool> are = picked(all, diagrams_, "class diagram");
        std::vector<Picture> pictures;
        std::vector<bool> areShown(graph_.getClasses().size());
        std::vector<bool> areDrawn(graph_.getEdges().size());
        std::vector<std::size_t> lastOn(graph_.getClasses().size()); // the picture that the class was put on last
        for (std::size_t at = 0; at < all.size(); ++at) {
            if (are[at]) {
                Picture picture = ofDiagram(*all[at], lastOn, at + 1);
                if (picture.boxes.empty()) {
                    context_.omissions.add(emptyDiagram);
                    continue;
                }
                for (const Box& box : picture.boxes) {
                    areShown[box.one] = true;
                }
                for (const Edge* edge : picture.edges) {
                    areDrawn[static_cast<std::size_t>(edge - graph_.getEdges().data())] = true;
                }
                pictures.push_back(std::move(picture));
            }
        }
        if (pictures.empty() && !diagrams_.empty()) {
            throw WrongOption("no class diagram of that name shows a class");
        }
        if (!pictures.empty() && diagrams_.empty() && packages_.empty()) {
            context_.omissions.add(hiddenClass, static_cast<std::uint64_t>(std::ranges::count(areShown, false)));
            context_.omissions.add(hiddenEdge, static_cast<std::uint64_t>(std::ranges::count(areDrawn, false)));
        }
        return pictures;
    }

    Picture ofDiagram(const KelClassDiagram& one, std::vector<std::size_t>& lastOn, std::size_t number) const {
        Picture picture = named(one);
        for (const KelModelElement* element : one.modelElements()) {
            if (element->elementType == KelElementType::classObject) {
                const auto& shown = static_cast<const KelClass&>(*element);
                if (graph_.holds(shown) && lastOn[graph_.indexOf(shown)] != number) {
                    lastOn[graph_.indexOf(shown)] = number;
                    picture.boxes.push_back({graph_.indexOf(shown)});
                }
            }
        }
        std::ranges::sort(picture.boxes, {}, &Box::one);
        EdgeCollector edges(picture);
        for (const KelModelElement* element : one.modelElements()) {
            for (const Edge& edge : graph_.edgesOf(*element)) {
                if (lastOn[graph_.indexOf(*edge.first)] == number && lastOn[graph_.indexOf(*edge.second)] == number) {
                    edges.add(edge);
                }
            }
        }
        return picture;
    }

    // The picture of each package that has classes, or one of all.
    std::vector<Picture> ofPackages(bool isSplit) const {
        constexpr std::size_t none = 0;
        std::vector<Picture> pictures(1); // the first one is not used
        std::vector<std::size_t> ofCluster(graph_.getClusters().size(), none);
        std::vector<std::size_t> ofClass(graph_.getClasses().size(), none);
        if (!isSplit) {
            pictures.push_back(named(context_.model));
        }
        std::vector<std::size_t> classCounts(graph_.getClusters().size());
        for (std::uint32_t one = 0; one < ofClass.size(); ++one) {
            if (graph_.clusterOf(one) != Cluster::none) {
                ++classCounts[graph_.clusterOf(one)];
            }
        }
        for (std::uint32_t at = 0; at < ofCluster.size(); ++at) {
            if (isPicked(at) && (!isSplit || classCounts[at] > 0)) {
                if (isSplit) {
                    pictures.push_back(named(*graph_.getClusters()[at].package));
                }
                ofCluster[at] = pictures.size() - 1;
            }
        }
        for (std::uint32_t one = 0; one < ofClass.size(); ++one) {
            const std::uint32_t cluster = graph_.clusterOf(one);
            if (isPicked(cluster)) {
                ofClass[one] = cluster != Cluster::none ? ofCluster[cluster] : pictures.size() - 1;
                pictures[ofClass[one]].boxes.push_back({one});
            }
        }
        addEdges(pictures, ofClass);
        pictures.erase(pictures.begin());
        return pictures;
    }

    // Each edge goes to the pictures of both of its classes.
    void addEdges(std::vector<Picture>& pictures, const std::vector<std::size_t>& ofClass) const {
        std::vector<EdgeCollector> collectors(pictures.begin(), pictures.end());
        for (const Edge& edge : graph_.getEdges()) {
            const std::size_t first = ofClass[graph_.indexOf(*edge.first)];
            const std::size_t second = ofClass[graph_.indexOf(*edge.second)];
            for (const std::size_t at : {first, first != second ? second : 0}) {
                if (at != 0) {
                    collectors[at].add(edge);
                }
            }
        }
        std::vector<std::size_t> lastOn(ofClass);
        for (std::size_t at = 1; at < pictures.size(); ++at) {
            for (const Edge* edge : pictures[at].edges) {
                for (const KelClass* end : {edge->first, edge->second}) {
                    const std::uint32_t one = graph_.indexOf(*end);
                    if (ofClass[one] != at && lastOn[one] != at) {
                        lastOn[one] = at;
                        pictures[at].boxes.push_back({one, true});
                    }
                }
            }
            std::ranges::sort(pictures[at].boxes, {}, &Box::one);
        }
    }

    const Graph& graph_;
    const ExportContext& context_;
    std::vector<std::string> packages_;
    std::vector<std::string> diagrams_;
    std::string scope_;
    std::vector<bool> isPicked_; // by cluster
};

} // namespace

std::vector<Picture> picturesOf(const Graph& graph, const ExportContext& context, std::string_view usualScope) {
    return Selection(graph, context, usualScope).make();
}

} // namespace exporter::graph
