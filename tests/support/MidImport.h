#pragma once

#include "builder/Associations.h"
#include "builder/Binding.h"
#include "builder/BuilderState.h"
#include "builder/Classes.h"
#include "builder/Diagrams.h"
#include "builder/Quids.h"
#include "builder/Relationships.h"
#include "builder/indexes/ContainerIndex.h"
#include "completion/cleanup.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelModel.h"
#include "support/ImportedModel.h"

#include <random>
#include <vector>

/// The builder in the middle of an import, with a model of some packages and diagrams, for tests that call its
/// operations one by one; their headers are included above. One at a time.
class MidImport {
public:
    static constexpr int containerCount = 3;

    explicit MidImport(unsigned int seed) : random(seed) {
        rose::startBuilding(model, log);
        for (int number = 0; number < containerCount; ++number) {
            auto* package = new KelDesignPackage();
            model.addChildPackage(package);
            rose::state.packages.add(package, true, nullptr);
            designPackages.push_back(package);
            diagrams.push_back(new KelClassDiagram());
            package->addDiagram(diagrams.back());
        }
    }
    MidImport(const MidImport&) = delete;
    MidImport& operator=(const MidImport&) = delete;
    ~MidImport() { rose::cleanup(); }

    /// A number from 0 to `bound` - 1.
    int below(int bound) { return static_cast<int>(random() % static_cast<unsigned int>(bound)); }
    template <class T>
    T& anyOf(std::vector<T>& things) {
        return things[static_cast<std::size_t>(below(static_cast<int>(things.size())))];
    }

    KelModel model;
    KeptLog log;
    std::vector<KelDesignPackage*> designPackages;
    std::vector<KelClassDiagram*> diagrams;
    std::mt19937 random;

private:
    const rose::ImportWatch watch_;
};
