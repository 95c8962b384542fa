#include "layout/SceneMaker.h"

#include <algorithm>
#include <array>

namespace layout {

namespace {

constexpr double compartmentGap = 8; // between a compartment's line and its text

/// Of the first name of a class's view.
constexpr auto shadowed =
    std::to_array<std::string_view>({"ClassUtility", "ParameterizedClassUtility", "InstantiatedClassUtility"});

} // namespace

/// The texts in the box of a class.
struct SceneMaker::ClassTexts {
    std::string stereotype;
    std::string name;
    std::vector<Member> attributes;
    std::vector<Member> operations;
    bool hasAttributes = false; // a compartment, which may be empty
    bool hasOperations = false;
    Font nameFont;
    Font memberFont;

    [[nodiscard]] double compartments() const { return (hasAttributes ? 1.0 : 0.0) + (hasOperations ? 1.0 : 0.0); }
    [[nodiscard]] double heightOfMembers() const {
        return lineHeight(memberFont.size) * static_cast<double>(attributes.size() + operations.size()) +
               compartments() * 2 * compartmentGap;
    }
};

SceneMaker::ClassTexts SceneMaker::textsOf(std::size_t index) const {
    const NodeId view = views_[index];
    const NodeId element = shown_[index];
    const NodeId label = labelOf(view);
    const NodeId compartment = tree_.find(view, "compartment");
    ClassTexts texts;
    texts.name = labelText(index);
    texts.nameFont = fontOf(view, label);
    texts.nameFont.isItalic = texts.nameFont.isItalic || (element != noNode && tree_.isTrue(element, "abstract"));
    texts.memberFont = fontOf(view, compartment);
    if (compartment == noNode || tree_.find(compartment, "font") == noNode) {
        texts.memberFont.isItalic = false;
    }
    const NodeId stereotype = tree_.find(view, "stereotype");
    if (tree_[stereotype].kind == NodeKind::object) {
        texts.stereotype = tree_.isTrue(stereotype, "hidden") ? std::string_view() : tree_.text(stereotype, "label");
    } else if (element != noNode && label == noNode && !tree_.text(element, "stereotype").empty()) {
        texts.stereotype = "<<" + std::string(tree_.text(element, "stereotype")) + ">>";
    }
    texts.hasAttributes = tree_.isTrue(view, "IncludeAttribute") && !tree_.isTrue(view, "SuppressAttribute");
    texts.hasOperations = tree_.isTrue(view, "IncludeOperation") && !tree_.isTrue(view, "SuppressOperation");
    const NodeId chosen = compartment == noNode ? noNode : tree_.find(compartment, "compartmentItems");
    if (tree_[chosen].first != noNode && chosen != noNode) {
        for (NodeId line = tree_[chosen].first; line != noNode; line = tree_[line].next) {
            const bool isOperation = tree_[line].text().find('(') != std::string_view::npos;
            (isOperation && texts.hasOperations ? texts.operations : texts.attributes)
                .push_back({std::string(tree_[line].text()), false, false});
        }
        texts.hasAttributes = texts.hasAttributes || !texts.attributes.empty();
    } else if (element != noNode) {
        const MemberStyle style{.hasStereotypes = tree_.isTrue(view, "ShowCompartmentStereotypes"),
                                .hasSignatures = tree_.isTrue(view, "ShowOperationSignature")};
        if (texts.hasAttributes) {
            texts.attributes = attributesOf(tree_, element, style);
        }
        if (texts.hasOperations) {
            texts.operations = operationsOf(tree_, element, style);
        }
    }
    return texts;
}

void SceneMaker::makeClass(std::size_t index) {
    Item& item = scene_.items[index];
    const NodeId view = views_[index];
    const NodeId element = shown_[index];
    std::string_view iconName = tree_.text(view, "icon");
    if (iconName.empty() && tree_.find(view, "icon_style") == noNode && tree_.find(view, "width") == noNode &&
        tree_.find(view, "IncludeAttribute") == noNode && element != noNode) {
        iconName = tree_.text(element, "stereotype"); // a view that says nothing of its looks
        iconName = findIcon(iconName) != nullptr && findIcon(iconName)->shape != Shape::circle ? iconName : "";
    }
    const std::string_view style = tree_.text(view, "icon_style");
    if (const Icon* icon = findIcon(iconName); icon != nullptr && (style.empty() || style == "Icon")) {
        makeIcon(index, *icon);
        return;
    }
    const std::string_view category = tree_[view].head().firstName;
    if (std::ranges::find(shadowed, category) != shadowed.end()) {
        item.shape = Shape::shadow;
    }
    const ClassTexts texts = textsOf(index);
    const ViewKind& kind = *kinds_[index];
    double widest = std::max(textWidth(texts.name, texts.nameFont.size, texts.nameFont.isBold),
                             textWidth(texts.stereotype, texts.nameFont.size, texts.nameFont.isBold));
    for (const auto* members : {&texts.attributes, &texts.operations}) {
        for (const Member& member : *members) {
            widest = std::max(widest, textWidth(member.text, texts.memberFont.size, texts.memberFont.isBold));
        }
    }
    const double step = lineHeight(texts.nameFont.size);
    const double needed = padding + (texts.stereotype.empty() ? 1 : 2) * step + texts.heightOfMembers() + padding;
    item.box = boxOf(view, item, std::max(kind.width, widest + 2 * padding), std::max(kind.height, needed));
    fillClass(item, texts, view);
    if (category.starts_with("Parameterized") && element != noNode) {
        addTemplateCorner(item, element, texts.memberFont);
    }
}

void SceneMaker::fillClass(Item& item, const ClassTexts& texts, NodeId view) {
    const Rectangle& box = item.box;
    const NodeId label = labelOf(view);
    const NodeId stereotype = tree_.find(view, "stereotype");
    const double step = lineHeight(texts.nameFont.size);
    const double room = box.width - padding;
    double top = box.y + padding;
    item.texts.reserve(2 + texts.attributes.size() + texts.operations.size());
    const auto head = [&](const std::string& text, NodeId place) {
        const auto at = location(place, "location");
        if (at && at->y >= box.y && at->y + step <= box.bottom() + 2) {
            top = at->y;
        }
        const Font font = fitting(texts.nameFont, text, room);
        writeLine(item, text, font, {box.centre().x, top + step * baseLine}, Anchor::middle);
        top += step;
    };
    if (texts.compartments() == 0 && label == noNode) {
        top = box.centre().y - step * (texts.stereotype.empty() ? 0.5 : 1);
    }
    if (!texts.stereotype.empty()) {
        head(texts.stereotype, tree_[stereotype].kind == NodeKind::object ? stereotype : noNode);
        item.texts.back().font.isItalic = false;
    }
    if (!texts.name.empty()) {
        head(texts.name, label);
    }
    if (texts.compartments() == 0) {
        return;
    }
    const auto lines = static_cast<double>(texts.attributes.size() + texts.operations.size());
    const double left = box.bottom() - top;
    const double scale = lines > 0 && texts.heightOfMembers() > left
                             ? std::clamp(left / texts.heightOfMembers(), smallestScale, 1.0)
                             : 1;
    const double gap = std::min(compartmentGap, std::max(0.0, left / 8)) * scale;
    std::string_view widest;
    double width = 0;
    for (const auto* members : {&texts.attributes, &texts.operations}) {
        for (const Member& member : *members) {
            const double own = textWidth(member.text, 1, false);
            widest = own > width ? std::string_view(member.text) : widest;
            width = std::max(width, own);
        }
    }
    Font font = texts.memberFont;
    font.size *= scale;
    font = fitting(font, widest, box.width - padding * 1.5); // one size for all
    const double memberStep = std::min(lineHeight(font.size), lineHeight(texts.memberFont.size) * scale);
    const auto compartment = [&](const std::vector<Member>& members) {
        item.separators.push_back(std::min(top + gap * 0.5, box.bottom()));
        top += gap * 1.5;
        for (const Member& member : members) {
            Font own = font;
            own.isItalic = own.isItalic || member.isAbstract;
            own.isUnderlined = own.isUnderlined || member.isStatic;
            writeLine(item, member.text, own, {box.x + padding * 0.75, top + memberStep * baseLine}, Anchor::start);
            top += memberStep;
        }
        top += gap * 0.5;
    };
    if (texts.hasAttributes) {
        compartment(texts.attributes);
    }
    if (texts.hasOperations) {
        compartment(texts.operations);
    }
}

void SceneMaker::addTemplateCorner(Item& item, NodeId element, const Font& font) {
    const std::vector<std::string> parameters = templateParametersOf(tree_, element);
    Font small = font;
    small.size *= 0.8;
    double widest = 60;
    for (const std::string& parameter : parameters) {
        widest = std::max(widest, textWidth(parameter, small.size, false));
    }
    const double step = lineHeight(small.size);
    const Rectangle corner{item.box.right() - widest * 0.8, item.box.y - step * static_cast<double>(parameters.size()),
                           widest + padding, step * std::max(1.0, static_cast<double>(parameters.size())) + padding};
    item.bars.push_back(corner);
    item.areBarsDashed = true;
    double top = corner.y + padding / 2;
    for (const std::string& parameter : parameters) {
        writeLine(item, parameter, small, {corner.centre().x, top + step * baseLine}, Anchor::middle);
        top += step;
    }
}

} // namespace layout
