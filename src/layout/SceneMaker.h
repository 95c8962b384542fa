#pragma once

#include "layout/makeScene.h"
#include "layout/metrics.h"
#include "layout/viewKinds.h"

#include <optional>
#include <string>
#include <vector>

namespace layout {

/// The place of a label, as far as the file gives it.
struct LabelPlace {
    std::optional<Point> at; ///< unset: the middle of the view
    bool isCentred = false;  ///< `at` is the middle of the text; else its left upper corner
    bool isLeft = false;     ///< lines begin below each other
    double width = 0;        ///< of its room; 0: unlimited
    double lines = 1;        ///< that it may have
};

/// Makes one scene: collects the views, gives those with a box their place, size and texts, and then leads the lines to
/// them. Refers to what it is given; used once.
class SceneMaker {
public:
    SceneMaker(const NotationTree& tree, const Elements& elements, NodeId diagram)
        : tree_(tree), elements_(elements), diagram_(diagram) {}

    [[nodiscard]] Scene make();

private:
    struct Referred {
        std::int64_t reference; // the number after "@"
        int item;
    };

    // The views and what they show (SceneMaker.cpp)
    void collect();
    void add(NodeId view, int parent);
    void takeElement(std::size_t index);
    void setTitles();
    void measure();
    [[nodiscard]] std::optional<Point> location(NodeId object, Key key) const;
    [[nodiscard]] int itemOf(NodeId view, Key key) const;
    [[nodiscard]] Font fontOf(NodeId view, NodeId label) const;
    [[nodiscard]] NodeId labelOf(NodeId view) const;
    [[nodiscard]] std::string_view labelText(std::size_t index) const;
    [[nodiscard]] LabelPlace placeOf(NodeId label) const;
    void write(Item& item, std::string_view text, const Font& font, const LabelPlace& place);
    void writeLine(Item& item, std::string text, const Font& font, Point at, Anchor anchor);
    void writeLabel(Item& item, NodeId view, NodeId label);

    // Boxes (boxes.cpp; of classes: classes.cpp)
    struct ClassTexts;
    void makeBox(std::size_t index);
    [[nodiscard]] Rectangle boxOf(NodeId view, const Item& item, double width, double height) const;
    void makeClass(std::size_t index);
    [[nodiscard]] ClassTexts textsOf(std::size_t index) const;
    void fillClass(Item& item, const ClassTexts& texts, NodeId view);
    void makeIcon(std::size_t index, const Icon& icon);
    void makeLabelled(std::size_t index, const ViewKind& kind);
    void makeNote(std::size_t index);
    void makeLifeline(std::size_t index);
    void addTemplateCorner(Item& item, NodeId element, const Font& font);
    void placeUnplaced();
    void stretchSwimlanes();

    // Lines (lines.cpp; of associations: associations.cpp)
    void makeLine(std::size_t index);
    void makeMessage(std::size_t index);
    void makeAssociation(std::size_t index);
    void makeRole(std::size_t index);
    void setEnds(std::size_t index);
    void leadLine(std::size_t index, std::vector<Point> bends);
    [[nodiscard]] bool isBare(NodeId view) const;
    [[nodiscard]] std::vector<Point> bendsOf(NodeId view) const;
    [[nodiscard]] const std::vector<NodeId>& rolesOf(NodeId association);
    [[nodiscard]] Point anchorOf(int item);
    [[nodiscard]] Point anchorBetweenEnds(int item) const;
    void leadTo(std::vector<Point>& line, int end, const Point& other);
    void leadToBox(std::vector<Point>& line, int end, const Point& other);
    void writeLineLabels(std::size_t index);
    void writeRoleTexts(Item& item, NodeId role);

    const NotationTree& tree_;
    const Elements& elements_;
    NodeId diagram_;
    Scene scene_;
    std::vector<NodeId> views_;          // of the items
    std::vector<const ViewKind*> kinds_; // of the items; null: no rule is for it
    std::vector<NodeId> shown_;          // the elements that they show
    std::vector<bool> isPlaced_;         // whether the file says where
    std::vector<Rectangle> reach_;       // of the items with a box: with their labels
    std::vector<Referred> byReference_;  // in the order of the numbers, then of the items
    NodeId rolesOwner_ = noNode;         // whose are in `roles_`
    std::vector<NodeId> roles_;
    int anchored_ = noItem; // the association that `anchor_` is of
    Point anchor_;
};

inline constexpr double padding = 12;        ///< between an outline and the text in it
inline constexpr double baseLine = 0.77;     ///< of the height of a line of text: where its base line is
inline constexpr double faceSpare = 1.08;    ///< faces that take the place of the usual one are wider
inline constexpr double smallestScale = 0.4; ///< of texts that are made to fit

/// The font in which a line of text fits into a width, as far as `smallestScale` allows.
[[nodiscard]] Font fitting(Font font, std::string_view text, double width);

/// How high a line of text is in a font of that size, with what is between two.
[[nodiscard]] double lineHeight(double size);

} // namespace layout
