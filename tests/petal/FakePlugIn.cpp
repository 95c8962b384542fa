// A bridge of another kind behind the same factory: petal must know no bridge but through its interface. The model
// file tells it, a line each, what to do; the model it makes says which options it was given.

#include "host/bridge/KelBridgeSpecification.h"
#include "host/bridge/KelModelBridgeImportDllInterface.h"
#include "host/encoding/localeText.h"
#include "host/log/KelException.h"
#include "host/log/KelLog.h"
#include "host/log/Severity.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelModel.h"
#include "host/options/BLIB.h"
#include "host/options/KelBridgeOptionLiteral.h"
#include "host/options/KelOption.h"
#include "host/options/KelOptionList.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

// The interface has no virtual destructor, since nobody deletes a bridge.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor)
class FakeBridge final : public KelModelBridgeImportDllInterface {
public:
    void getSpecification(const KelString& bridgeId, KelBridgeSpecification& specification) override {
        specification.initialize("http://web", "Vendor", "Tool", "", "Methods", nullptr, "9.8.7", bridgeId, false,
                                 false);
    }

    void getOptionList(KelOptionList& options) override {
        options.removeAll();
        options.addOption(std::make_unique<KelOption>(
            KelOptionDescription{"File", "File", "The file.", "", true, {}, {{"mdl", "cat"}, "Models", true}}));
        const std::vector<KelOptionChoice> types{{"Alpha", "Alpha"}, {"Beta 2", "The second"}};
        options.addOption(std::make_unique<KelOption>(KelOptionDescription{
            "Supported types", "Enumerated", "Where types come from\n   or go to\n  \n", "Alpha", false, types, {}}));
        static const KelBridgeOptionLiteral encoding("ENCODING", "Encoding", "Enumerated", "The encoding.",
                                                     &BLIB::BP_ENCODING_ENUM,
                                                     &BLIB::BP_ENCODING_ENUM_WESTERN_EUROPEAN__WINDOWS_1252_);
        options.addOption(encoding.generateOption(false));
    }

    KelString getMappingSpecificationXmlFile() override { return "FakeMapping"; }

    bool run(const KelString& /*bridgeId*/, KelModel& model, KelOptionList& options, KelLog& log) override {
        const KelString path = utf8ToLocale(options.getValue("File").text());
        std::ifstream file(path.text());
        if (!file) {
            throw KelException(KelString("[FAKE_F0001] cannot open ") + path);
        }
        ++imports_;
        model.setName("made by the fake");
        model.description = options.getValue("Supported types") + KelString(", ") + options.getValue("Encoding");
        for (std::string line; std::getline(file, line);) {
            obey(line, model, log);
        }
        return true;
    }

private:
    static inline int imports_ = 0; // in this process

    static void obey(const std::string& line, KelModel& model, KelLog& log) {
        std::istringstream words(line);
        std::string order;
        std::string argument;
        words >> order >> std::ws;
        std::getline(words, argument);
        if (order == "throw") {
            throw KelException(argument.c_str());
        }
        if (order == "first" ? imports_ > 1 : order == "later" && imports_ == 1) {
            throw KelException("[FAKE_F0004] not at its place");
        }
        if (order == "exit") { // as a bridge does that cannot go on reading
            std::exit(std::stoi(argument));
        }
        if (order == "say") { // a line in pieces
            std::fputs(argument.substr(0, argument.size() / 2).c_str(), stderr);
            std::fputs(argument.substr(argument.size() / 2).c_str(), stderr);
            std::fputs("\n", stderr);
        }
        if (order == "crash") {
            std::signal(SIGSEGV, SIG_DFL);
            std::raise(SIGSEGV);
        }
        if (order == "hang") { // having told the process's number
            std::ofstream(argument) << ::getpid() << std::endl;
            for (;;) {
                ::pause();
            }
        }
        if (order == "eat") { // as many megabytes
            static std::vector<char> eaten;
            try {
                eaten.resize(std::stoul(argument) << 20);
            } catch (const std::bad_alloc&) {
                throw KelException("[FAKE_F0003] unexpected");
            }
        }
        if (order == "log") { // SEVERITY TEXT|FURTHER TEXT, where a vertical tab stands for a line's end
            std::ranges::replace(argument, '\v', '\n');
            const std::size_t blank = argument.find(' ');
            const std::size_t bar = std::min(argument.find('|'), argument.size());
            const int level = severityLevel(argument.substr(0, blank).c_str());
            if (log.accepts(level)) {
                log.record(KelLogEvent(argument.substr(blank + 1, bar - blank - 1).c_str(), "FAKE_X0001", level,
                                       argument.substr(std::min(bar + 1, argument.size())).c_str()));
            }
        }
        if (order == "package") {
            auto* package = new KelDesignPackage;
            package->setName(argument.c_str());
            model.addChildPackage(package);
        }
        if (order == "classes") {
            for (int made = 0; made < std::stoi(argument); ++made) {
                auto* some = new KelClass;
                some->setName("some class");
                static_cast<KelDesignPackage*>(model.childPackages().first())->addModelElement(some);
            }
        }
    }
};

} // namespace

extern "C" KEL_API KelModelBridgeDllInterface* getKelIbmRationalRose40ImportInterface() {
    static FakeBridge bridge;
    return &bridge;
}
