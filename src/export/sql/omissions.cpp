#include "export/sql/omissions.h"

#include "export/Omissions.h"
#include "export/asItsClass.h"
#include "export/modelWalk.h"

namespace exporter::sql {

namespace {

constexpr Omission operation{"operation", "operations", "a table has no behaviour"};
constexpr Omission realization{"realization", "realizations", "an interface is no table"};
constexpr Omission dependency{"dependency", "dependencies", "rows do not depend on each other so"};
constexpr Omission diagram{"diagram", "diagrams", "a script has no pictures"};
constexpr Omission stereotype{"stereotype", "stereotypes", "tables and packages have none"};
constexpr Omission visibility{"visibility", "visibilities", "each column is visible"};
constexpr Omission friendFlag{"friend flag", "friend flags", "tables have no friends"};
constexpr Omission virtualFlag{"virtual flag", "virtual flags", "tables do not inherit"};
constexpr Omission staticFlag{"static flag", "static flags", "each row has its own references"};
constexpr Omission navigability{"navigability", "navigabilities", "a reference is followed both ways"};
constexpr Omission classMultiplicity{"class multiplicity", "class multiplicities", "a table has any number of rows"};
constexpr Omission concurrency{"concurrency", "concurrencies", "the system cares for it"};
constexpr Omission description{"description", "descriptions", "the element is no table and no column"};

class Counting final : public ModelVisitor {
public:
    explicit Counting(Omissions& omissions) : omissions_(omissions) {}

    void enter(const KelObject& element) override {
        asItsClass(element, [this](const auto& object) { count(object); });
    }

private:
    void add(const Omission& omission, bool is) {
        if (is) {
            omissions_.add(omission);
        }
    }
    void addDescription(const KelModelObject& object) {
        add(description, !object.description.isEmpty());
        omissions_.add(description, static_cast<std::uint64_t>(object.notes().count()));
    }

    void count(const KelDesignPackage& package) {
        add(stereotype, !package.stereotype.isEmpty());
        addDescription(package);
    }
    void count(const KelClass& one) {
        add(classMultiplicity, !one.multiplicity.isEmpty());
        add(concurrency, one.concurrency != 0);
    }
    void count(const KelAttribute& attribute) { add(visibility, attribute.visibility != 0); }
    void count(const KelOperation& /*operation*/) { omissions_.add(operation); }
    void count(const KelAssociationRole& role) {
        add(navigability, role.isNavigable);
        add(friendFlag, role.isFriend);
        add(staticFlag, role.isStatic);
        addDescription(role);
    }
    void count(const KelGeneralization& generalization) {
        add(visibility, generalization.visibility != 0);
        add(friendFlag, generalization.isFriend);
        add(virtualFlag, generalization.isVirtual);
        addDescription(generalization);
    }
    void count(const KelRealization& /*realization*/) { omissions_.add(realization); }
    void count(const KelDependency& /*dependency*/) { omissions_.add(dependency); }
    void count(const KelClassDiagram& /*diagram*/) { omissions_.add(diagram); }
    void count(const KelObject& /*other*/) {}

    Omissions& omissions_;
};

} // namespace

void addOmissions(const KelModel& model, Omissions& omissions) {
    Counting counting(omissions);
    walkModel(model, documentParts, counting);
}

} // namespace exporter::sql
