#include "bridge/KelIbmRationalRose40ImportDllInterface.h"
#include "builder/BuilderState.h"
#include "host/literals/HOCM.h"
#include "host/log/KelException.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelNote.h"
#include "host/options/KelOptionList.h"
#include "support/ImportedModel.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <thread>

namespace {

constexpr const char* everything = PETAL_EXAMPLES "/everything.mdl";

// Ends in the middle, where most kinds of current objects are set and something of each list waits.
constexpr std::string_view unfinished = R"((object Class_Category "Logical View"
(object Class "A"
    (object Operation "f"
        (object Parameter "p"
(object Association "ab"
 quid "41"
    (object Role "a"
        supplier "Logical View::B"
        keys
            (object ClassAttribute "x"
(object Inheritance_Relationship
(object ClassDiagram "D"
    (object AssociationViewNew "waiting" @6
 quidu "42"
    NoteView @7
        Parent_View @8
        label "text of a note"
(object UsesView "" @13
(object AttachView "" @16
(object Class_Category "Use Case View"
(object Mechanism @19
)";

/// How many current objects of some kinds there are.
int currentObjects() {
    const void* const pointers[] = {rose::state.aPackage,  rose::state.aDiagram,     rose::state.aClass,
                                    rose::state.aArgument, rose::state.aAssociation, rose::state.activeObject};
    return static_cast<int>(std::size(pointers) - std::count(std::begin(pointers), std::end(pointers), nullptr));
}

/// Whether it succeeded or failed, an import leaves nothing that waits.
void expectNothingWaits() {
    EXPECT_EQ(rose::state.toBeClasses.getCount(), 0);
    EXPECT_EQ(rose::state.toBeAssociations.getCount(), 0);
    EXPECT_EQ(rose::state.toBeNotes.getCount(), 0);
    EXPECT_EQ(rose::state.packages.getCount(), 0);
    EXPECT_EQ(rose::state.theFile, nullptr);
}

TEST(RepeatedImport, StartsWithoutTheStateOfTheOneBefore) {
    const ImportedModel whole = ImportedModel::ofFile(everything);
    const ImportedModel before = ImportedModel::ofBody(unfinished);
    EXPECT_EQ(before.failure, "");
    EXPECT_GT(currentObjects(), 2) << "there is no state that could be left";
    EXPECT_EQ(ImportedModel::ofFile(everything).json(), whole.json());

    const ImportedModel again = ImportedModel::ofBody(unfinished);
    const ImportedModel empty = ImportedModel::ofBody("");
    EXPECT_EQ(currentObjects(), 0);
    EXPECT_TRUE(empty.model.childPackages().isEmpty());
}

/// A log that fails at its n-th event.
class FailingLog final : public KelLog {
public:
    FailingLog(std::size_t failsAt, std::function<void()> fail) : left_(failsAt), fail_(std::move(fail)) {}
    void record(const KelLogEvent&) override {
        if (--left_ == 0) {
            fail_();
        }
    }

private:
    std::size_t left_;
    std::function<void()> fail_;
};

/// Imports into the model; returns the text that the bridge throws, if it does.
std::string failureOf(KelModel& model, KelLog& log, const char* file = everything) {
    KelIbmRationalRose40ImportDllInterface bridge;
    KelOptionList options;
    bridge.getOptionList(options);
    options.setValue("File", file);
    try {
        EXPECT_TRUE(bridge.run("bridge-under-test", model, options, log));
    } catch (const KelException& exception) {
        return exception.what();
    }
    return "";
}

TEST(RepeatedImport, WhateverFailsTheModelIsEmptyAndTheNextImportUnharmed) {
    struct Row {
        const char* what;
        std::function<void()> fail;
        std::string_view failure; // how the text begins that the host sees
    };
    const Row rows[] = {
        {"the host's exception", [] { throw KelException("[X] as it was"); }, "[X] as it was"},
        {"another exception", [] { throw std::runtime_error("lost"); },
         "[HOCM_F0001] Unexpected error in bridge KelIbmRationalRose40Import"},
        {"no exception class", [] { throw 1; }, "[HOCM_F0001] Unexpected error in bridge KelIbmRationalRose40Import"},
    };
    const ImportedModel whole = ImportedModel::ofFile(everything);
    for (const Row& row : rows) {
        for (std::size_t event = 1; event <= whole.log.lines.size(); ++event) {
            FailingLog log(event, row.fail);
            KelModel model;
            const std::string failure = failureOf(model, log);
            ASSERT_TRUE(failure.starts_with(row.failure)) << row.what << " at event " << event << ": " << failure;
            EXPECT_TRUE(model.isEmpty());
            EXPECT_TRUE(model.getName().isEmpty());
            expectNothingWaits();
        }
        const ImportedModel next = ImportedModel::ofFile(everything);
        EXPECT_EQ(next.json(), whole.json()) << row.what;
        EXPECT_EQ(next.log.lines, whole.log.lines) << row.what;
    }
}

/// How the text of that refusal begins.
std::string beginningOf(const HOCM::MessageInstance_String& message) {
    return "[" + std::string(message.getFullCode().view()) + "] Bridge KelIbmRationalRose40Import ";
}

TEST(RefusedImport, AModelThatOwnsAnythingStaysAsItIs) {
    struct Row {
        const char* what;
        std::function<bool(KelModel&)> fill;
    };
    const Row rows[] = {
        {"a package", [](KelModel& model) { return model.addChildPackage(new KelDesignPackage); }},
        {"a type that no import makes", [](KelModel& model) { return model.addType(new KelBaseType); }},
        {"an origin", [](KelModel& model) { return model.addMetadataOrigin(new KelMetadataOrigin); }},
        {"a note", [](KelModel& model) { return model.addNote(new KelNote); }},
    };
    EXPECT_EQ(KelMetaClass::of(KelElementType::model).owningEnds().size(), std::size(rows)) << "it can own more";
    int hosts = 0;
    for (const Row& row : rows) {
        const ImportedModel before = ImportedModel::ofBody(unfinished);
        KelModel model;
        model.setName("the host's");
        model.generalPointer = &hosts;
        ASSERT_TRUE(row.fill(model));
        const std::string json = jsonOf(model);
        KeptLog log;
        const std::string failure = failureOf(model, log, "/nowhere/missing.mdl");
        EXPECT_TRUE(failure.starts_with(beginningOf(HOCM::BRIDGE_MODEL_NOT_EMPTY))) << row.what << ": " << failure;
        EXPECT_EQ(jsonOf(model), json) << row.what;
        EXPECT_FALSE(model.isEmpty()) << row.what;
        EXPECT_EQ(model.generalPointer, &hosts) << row.what;
        EXPECT_TRUE(log.lines.empty());
        EXPECT_GT(currentObjects(), 2) << "the builder was reset for " << row.what;
        EXPECT_EQ(rose::state.aModel, &before.model);

        model.recursiveDelete();
        EXPECT_EQ(failureOf(model, log), "") << "emptied, but for the pointer";
        EXPECT_EQ(model.getName(), "everything");
        EXPECT_EQ(model.generalPointer, nullptr);
    }
}

TEST(RefusedImport, AnImportHearsNothingOfOthersThatItsLogStarts) {
    /// Starts imports at every event, on this thread and on another.
    class StartingLog final : public KelLog {
    public:
        explicit StartingLog(KelModel& filled) : filled_(filled) {}
        void record(const KelLogEvent& event) override {
            kept.record(event);
            KelModel own;
            std::string failures[3];
            std::thread thread([&] { failures[0] = failureOf(own, unheard_); });
            thread.join();
            failures[1] = failureOf(own, unheard_);
            failures[2] = failureOf(filled_, unheard_);
            for (const std::string& failure : failures) {
                refused += static_cast<std::size_t>(failure.starts_with(beginningOf(HOCM::BRIDGE_IMPORT_RUNNING)));
            }
            EXPECT_TRUE(own.isEmpty());
        }

        KeptLog kept;
        std::size_t refused = 0;

    private:
        KelModel& filled_;
        KeptLog unheard_;
    };
    const ImportedModel whole = ImportedModel::ofFile(everything);
    KelModel model;
    StartingLog log(model);
    EXPECT_EQ(failureOf(model, log), "");
    EXPECT_EQ(jsonOf(model), whole.json());
    EXPECT_EQ(log.kept.lines, whole.log.lines);
    EXPECT_EQ(log.refused, 3 * whole.log.lines.size());

    std::string failure = "none";
    std::thread thread([&] {
        KelModel other;
        KeptLog unheard;
        failure = failureOf(other, unheard);
    });
    thread.join();
    EXPECT_EQ(failure, "") << "another thread, afterwards";
}

} // namespace
