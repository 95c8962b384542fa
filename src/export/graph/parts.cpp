#include "export/graph/parts.h"

#include "host/model/KelDesignPackage.h"
#include "text/utf8.h"

#include <algorithm>
#include <tsl/robin_map.h>
#include <tsl/robin_set.h>

namespace exporter::graph {

namespace {

/// Fills the parts of a picture one after the other.
class Parts {
public:
    Parts(const Graph& graph, const Picture& whole, Syntax& syntax, std::uint64_t mostClasses,
          std::size_t mostCharacters)
        : graph_(graph), whole_(whole), syntax_(syntax), mostClasses_(mostClasses), mostCharacters_(mostCharacters) {}

    std::vector<Picture> make() {
        startPart();
        tsl::robin_map<std::uint32_t, std::vector<const Edge*>> edgesOf; // by the class that is drawn below
        for (const Edge* edge : whole_.edges) {
            edgesOf[graph_.indexOf(*edge->second)].push_back(edge);
        }
        for (const Box& box : whole_.boxes) {
            if (!box.isBare) {
                addBox(box);
            }
            for (const Edge* edge : edgesOf[box.one]) {
                addEdge(*edge);
            }
        }
        finish();
        return std::move(parts_);
    }

private:
    void startPart() {
        parts_.push_back({.name = whole_.name,
                          .qualifiedName = whole_.qualifiedName,
                          .part = {},
                          .notesOf = parts_.empty() ? whole_.notesOf : nullptr,
                          .boxes = {},
                          .edges = {}});
        size_ = overhead;
        isOn_.clear();
        hasCluster_.clear();
        fullCount_ = 0;
    }
    void addBox(const Box& box) {
        std::string text;
        syntax_.addBox(box, 1, text);
        syntax_.addBeside(box, text);
        const std::size_t size = characterCount(text) + clusterSize(box.one);
        const bool isOtherPackage = fullCount_ > 0 && graph_.clusterOf(box.one) != cluster_;
        if (isOtherPackage || fullCount_ >= mostClasses_ || (fullCount_ > 0 && size_ + size > mostCharacters_)) {
            startPart();
            size_ += clusterSize(box.one); // once more than needed at most
        }
        cluster_ = graph_.clusterOf(box.one);
        ++fullCount_;
        size_ += size;
        put(box.one);
        parts_.back().boxes.push_back(box);
    }
    void addEdge(const Edge& edge) {
        std::string text;
        syntax_.addEdge(edge, text);
        const std::size_t size = characterCount(text);
        if (size_ + size + bareSize(edge) > mostCharacters_ && size_ > overhead) {
            startPart();
        }
        size_ += size + bareSize(edge);
        for (const KelClass* end : {edge.first, edge.second}) {
            put(graph_.indexOf(*end));
        }
        parts_.back().edges.push_back(&edge);
    }
    [[nodiscard]] std::size_t bareSize(const Edge& edge) {
        std::size_t size = 0;
        for (const KelClass* end : {edge.first, edge.second}) {
            const std::uint32_t one = graph_.indexOf(*end);
            if (!isOn_.contains(one)) {
                std::string text;
                syntax_.addBox({one, true}, 1, text);
                size += characterCount(text) + clusterSize(one);
            }
        }
        return size;
    }
    void put(std::uint32_t one) {
        isOn_.insert(one);
        hasCluster_.insert(graph_.clusterOf(one));
    }
    /// Of the lines around the classes of its package, unless these are there already.
    [[nodiscard]] std::size_t clusterSize(std::uint32_t one) {
        std::string text;
        if (const std::uint32_t at = graph_.clusterOf(one); at != Cluster::none && !hasCluster_.contains(at)) {
            syntax_.startCluster(graph_.getClusters()[at], 0, text);
            syntax_.endCluster(0, text);
        }
        return characterCount(text);
    }
    void finish() {
        tsl::robin_map<std::uint32_t, std::uint32_t> lastOn; // the number of the last part with the class
        for (std::uint32_t at = 0; at < parts_.size(); ++at) {
            Picture& part = parts_[at];
            part.part = "part " + std::to_string(at + 1) + " of " + std::to_string(parts_.size());
            for (const Box& box : part.boxes) {
                lastOn[box.one] = at + 1;
            }
            if (!part.boxes.empty() && graph_.clusterOf(part.boxes.front().one) != Cluster::none) {
                part.part +=
                    ": " +
                    text::repairedUtf8(
                        graph_.getClusters()[graph_.clusterOf(part.boxes.front().one)].package->getName().view());
            }
            for (const Edge* edge : part.edges) {
                for (const KelClass* end : {edge->first, edge->second}) {
                    const std::uint32_t one = graph_.indexOf(*end);
                    if (lastOn[one] != at + 1) {
                        lastOn[one] = at + 1;
                        part.boxes.push_back({one, true});
                    }
                }
            }
            std::ranges::sort(part.boxes, {}, &Box::one);
        }
    }

    static constexpr std::size_t overhead = 150; // of what comes before the boxes

    const Graph& graph_;
    const Picture& whole_;
    Syntax& syntax_;
    std::uint64_t mostClasses_;
    std::size_t mostCharacters_;
    std::vector<Picture> parts_;
    std::size_t size_ = 0;                     // of the last part, at most
    std::uint64_t fullCount_ = 0;              // its classes with members
    std::uint32_t cluster_ = Cluster::none;    // of these
    tsl::robin_set<std::uint32_t> isOn_;       // the classes on it
    tsl::robin_set<std::uint32_t> hasCluster_; // the packages of these
};

} // namespace

std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    for (const char byte : text) {
        const auto value = static_cast<unsigned char>(byte);
        count += static_cast<std::size_t>((value & 0xC0U) != 0x80U) + static_cast<std::size_t>(value >= 0xF0U);
    }
    return count;
}

std::vector<Picture> partsOf(const Graph& graph, const Picture& picture, Syntax& syntax, std::uint64_t mostClasses,
                             std::size_t mostCharacters) {
    return Parts(graph, picture, syntax, mostClasses, mostCharacters).make();
}

} // namespace exporter::graph
