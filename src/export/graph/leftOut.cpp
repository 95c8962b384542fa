#include "export/Omissions.h"
#include "export/asItsClass.h"
#include "export/graph/Syntax.h"
#include "export/modelWalk.h"
#include "export/relationships.h"
#include "host/model/KelNote.h"
#include "host/model/KelTypeValue.h"
#include "text/ascii.h"
#include "text/escape.h"
#include "text/utf8.h"

#include <array>
#include <span>
#include <tsl/robin_set.h>
#include <type_traits>

namespace exporter::graph {

namespace {

constexpr std::string_view notDrawn = "class diagrams do not show it";

constexpr Omission description{"description", "descriptions", notDrawn};
constexpr Omission note{"note", "notes",
                        "only those of classes are drawn, and those of a picture's package or diagram"};
constexpr Omission blankNote{"blank note", "blank notes", "there is nothing to show"};
constexpr Omission unprintable{"unprintable character", "unprintable characters", "U+FFFD is shown in their place"};
constexpr Omission emptyPackage{"package without classes", "packages without classes",
                                "a package is drawn around them"};
constexpr Omission key{"key", "keys", "only primary keys and qualifiers are shown"};
constexpr Omission typeValue{"type value", "type values", "types are names only"};
constexpr Omission dataType{"data type", "data types", "types are names only"};
constexpr Omission persistence{"persistence flag", "persistence flags", notDrawn};
constexpr Omission multiplicity{"multiplicity of a class", "multiplicities of classes", notDrawn};
constexpr Omission containment{"containment", "containments", notDrawn};
constexpr Omission concurrency{"concurrency", "concurrencies", notDrawn};
constexpr Omission virtualFlag{"virtual flag", "virtual flags", notDrawn};
constexpr Omission friendFlag{"friend flag", "friend flags", notDrawn};
constexpr Omission staticFlag{"static flag of a role", "static flags of roles", notDrawn};
constexpr Omission visibility{"visibility of a generalization", "visibilities of generalizations", notDrawn};
constexpr Omission semantics{"semantics text", "semantics texts", notDrawn};
constexpr Omission condition{"condition", "conditions", notDrawn};
constexpr Omission space{"space", "spaces", notDrawn};

class LeftOut final : public ModelVisitor {
public:
    LeftOut(std::span<const Picture> pictures, Omissions& omissions) : omissions_(omissions) {
        for (const Picture& picture : pictures) {
            noted_.insert(picture.notesOf);
        }
    }

private:
    void enter(const KelObject& object) override {
        asItsClass(object, [this](const auto& one) {
            using Element = std::remove_cvref_t<decltype(one)>;
            if constexpr (std::is_base_of_v<KelModelObject, Element> && !std::is_same_v<Element, KelModel>) {
                add(description, !one.description.isEmpty());
            }
            const bool hasPicture = std::is_same_v<Element, KelClass> || noted_.contains(&one);
            for (const KelNote* each : one.notes()) {
                add(blankNote, hasPicture && isBlank(each->description.view()));
                add(note, !hasPicture);
                countUnprintable(each->description);
            }
            countUnprintable(one.getName());
            count(one);
        });
    }

    void add(const Omission& omission, bool isThere) { omissions_.add(omission, static_cast<std::uint64_t>(isThere)); }

    // Line ends and tabs are shown as blanks, or as line ends in notes.
    void countUnprintable(const KelString& shown) {
        const std::string_view bytes = shown.view();
        if (text::isPrintableAscii(bytes)) {
            return;
        }
        for (std::size_t at = 0; at < bytes.size();) {
            const int character = text::nextCharacter(bytes, at);
            const bool isSpace = character == '\n' || character == '\r' || character == '\t';
            add(unprintable, character < 0 || (!isSpace && !text::isPrintable(character)) || character == 0xFFFE ||
                                 character == 0xFFFF);
        }
    }

    void count(const KelElement& /*element*/) {}
    void count(const KelDesignPackage& package) {
        countUnprintable(package.stereotype);
        bool hasClass = !package.childPackages().isEmpty(); // which are counted themselves
        for (const KelModelElement* element : package.modelElements()) {
            hasClass = hasClass || element->elementType == KelElementType::classObject;
        }
        add(emptyPackage, !hasClass);
    }
    void count(const KelClass& one) {
        countUnprintable(one.stereotype);
        add(persistence, one.isPersistent);
        add(multiplicity, !one.multiplicity.isEmpty());
        add(concurrency, one.concurrency != 0);
        add(space, one.space != 0);
    }
    void count(const KelAttribute& attribute) {
        countUnprintable(attribute.initialValue);
        add(containment, attribute.containment != unspecified);
    }
    void count(const KelArgument& argument) { countUnprintable(argument.initialValue); }
    void count(const KelOperation& operation) {
        add(virtualFlag, operation.isVirtual);
        add(friendFlag, operation.isFriend);
        add(concurrency, operation.concurrency != 0);
        add(semantics, !operation.semantics.isEmpty());
        add(condition, !operation.precondition.isEmpty());
        add(condition, !operation.postcondition.isEmpty());
    }
    void count(const KelCandidateKey& one) { add(key, one.getPrimaryOfClass() == nullptr); }
    void count(const KelForeignKey& one) { add(key, one.associationRoles().isEmpty()); }
    void count(const KelBaseType& type) { countDataType(type); }
    void count(const KelDerivedType& type) {
        countDataType(type);
        omissions_.add(typeValue, static_cast<std::uint64_t>(type.typeValues().count()));
    }
    void countDataType(const KelConcreteType& type) {
        add(dataType, !type.dataType.isEmpty() && type.dataType.view() != "undefined");
    }
    void count(const KelAssociationRole& role) {
        countUnprintable(role.multiplicity);
        add(staticFlag, role.isStatic);
        add(friendFlag, role.isFriend);
        const KelAssociation* association = role.getAssociation();
        if (association != nullptr && role.containment != unspecified) {
            const std::size_t index = association->associationRoles()[0] == &role ? 0 : 1;
            const bool isDrawn = association->associationRoles().count() == 2 && role.containment == byValue &&
                                 aggregationOf(*association, index) == Aggregation::composite;
            add(containment, !isDrawn);
        }
    }
    void count(const KelGeneralization& generalization) {
        add(virtualFlag, generalization.isVirtual);
        add(friendFlag, generalization.isFriend);
        add(visibility, generalization.visibility != 0);
    }

    static constexpr std::int32_t byValue = 0;
    static constexpr std::int32_t unspecified = 2;

    Omissions& omissions_;
    tsl::robin_set<const KelElement*, KelPointerHash> noted_; // whose notes are on pictures by themselves
};

} // namespace

void countOmissions(const KelModel& model, std::span<const Picture> pictures, Omissions& omissions) {
    LeftOut visitor(pictures, omissions);
    walkModel(model, documentParts, visitor);
}

} // namespace exporter::graph
