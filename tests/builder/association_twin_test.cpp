// The registry of quids, held against walks through the placeholders and the packages.

#include "builder/Diagrams.h"
#include "builder/Associations.h"
#include "builder/Quids.h"
#include "host/model/KelAssociation.h"
#include "support/MidImport.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using namespace rose;

const char* quidOf(const KelAssociation& association) {
    const auto* quid = static_cast<const KelString*>(association.generalPointer);
    return quid != nullptr ? quid->text() : nullptr;
}

bool hasQuid(const KelAssociation& association, const std::string& quid) {
    return quidOf(association) != nullptr && quid == quidOf(association);
}

KelAssociation* walkPlaceholders(const std::string& quid) {
    for (int index = 0; index < state.toBeAssociations.getCount(); ++index) {
        auto* association = static_cast<KelAssociation*>(const_cast<void*>(state.toBeAssociations[index]));
        if (hasQuid(*association, quid)) {
            return association;
        }
    }
    return nullptr;
}

KelAssociation* walkPackages(const std::string& quid) {
    for (int place = 0; place < state.packages.getCount(); ++place) {
        for (KelModelElement* element : static_cast<const KelDesignPackage*>(state.packages[place])->modelElements()) {
            if (element->elementType == KelElementType::association &&
                hasQuid(static_cast<KelAssociation&>(*element), quid)) {
                return static_cast<KelAssociation*>(element);
            }
        }
    }
    return nullptr;
}

/// What the scanner may call in any order; few quids, so that they collide.
class RandomImport : public MidImport {
public:
    using MidImport::MidImport;

    std::string anyQuid() { return std::to_string(below(6)); }

    void step() {
        std::string text = anyQuid();
        switch (below(7)) {
        case 0:
            state.aPackage = anyOf(designPackages);
            break;
        case 1:
            CreateAssociation(text.data());
            break;
        case 2:
            SetQuid(text.data());
            break;
        case 3:
            CreateAssociationInView(text.data());
            break;
        case 4:
            connect(text);
            break;
        case 5:
            state.aDiagram = below(4) == 0 ? nullptr : anyOf(diagrams);
            break;
        default:
            if (below(8) == 0) {
                delete walkPackages(text);
            }
        }
        const KelString quid(anyQuid().c_str());
        EXPECT_EQ(QuidRegistry::findPlaceholder(quid), walkPlaceholders(quid.text()));
        EXPECT_EQ(QuidRegistry::findInPackages(quid), walkPackages(quid.text()));
    }

private:
    void connect(std::string& text) {
        const bool isAwaited = state.aDiagram != nullptr && state.InAssociationView;
        KelAssociation* expected = walkPlaceholders(text);
        expected = expected != nullptr ? expected : walkPackages(text);
        expected = expected != nullptr || !isAwaited ? expected : state.aAssociation;
        ConnectAssociationToDiagram(text.data());
        if (isAwaited) {
            EXPECT_EQ(state.aAssociation, expected);
            EXPECT_TRUE(state.aAssociation == nullptr || state.aDiagram->modelElements().holds(*state.aAssociation));
        }
    }
};

TEST(AssociationTwin, QuidsFindWhatAWalkFinds) {
    for (unsigned int seed = 1; seed <= 60 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomImport building(seed);
        state.aPackage = building.designPackages.back();
        for (int step = 0; step < 600 && !HasFailure(); ++step) {
            building.step();
        }
    }
}

} // namespace
