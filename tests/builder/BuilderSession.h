#pragma once

#include "builder/BuilderState.h"
#include "builder/ImportWatch.h"
#include "builder/Packages.h"
#include "completion/cleanup.h"
#include "support/ImportedModel.h"

#include <gtest/gtest.h>

#include <string>

namespace rose {

/// An import without a file, inside the category "Logical View": a test calls the builder's operations itself.
class BuilderSession : public testing::Test {
protected:
    BuilderSession() {
        aModel = &model;
        localLog = &log;
        resetBuilderState();
        call(CreatePackage, "Logical View");
    }
    ~BuilderSession() override { cleanup(); }

    /// Calls an operation as the scanner does, with a text that is gone afterwards.
    template <class... Rest>
    static void call(void (*operation)(char*, Rest...), std::string text, Rest... rest) {
        operation(text.data(), rest...);
    }

    KelModel model;
    KeptLog log;

private:
    ImportWatch watch_;
};

} // namespace rose
