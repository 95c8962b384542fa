#pragma once

#include "host/bridge/KelImportObserver.h"
#include "host/model/KelMetaClass.h"
#include "host/model/KelObject.h"
#include "scanner/RuleTable.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

/// Writes down the steps of the imports on its thread, a line each: the keyword with its value, the one that announced
/// it if that is another, the step, the reason if there is one, the objects.
class Steps final : public KelImportObserver {
public:
    /// `file` is what the import reads.
    explicit Steps(std::string_view file) : file_(file) {}

    [[nodiscard]] std::string text() const {
        std::string text = lines_;
        for (const std::string& line : unordered_) {
            text += line;
        }
        return text;
    }

private:
    /// The reasons after `none` in their order.
    static constexpr std::string_view reasonNames =
        "beforeLogicalView noPackage inMechanism inUseCaseView noOwner noClass noAssociation "
        "noDiagram nothingActive nameTaken takesNoArguments drawnAlready endNotDrawn nothingToShow tooFewEnds "
        "endWithoutClass literalsUnusable definedTwice textAdded takenAsTrue valueUnknown wholeOnly "
        "attachedToDiagram shadow attachedToNothing placeholder becameEnumeration nameCleared onlyNamed "
        "splitForKey keyForAggregation withOwner noSupplier supplierUnknown typeDefaulted typeConverted "
        "typeByReference ";

    static std::string nameOf(KelImportReason reason) {
        std::string_view names = reasonNames;
        for (auto left = static_cast<int>(reason); left > 1; --left) {
            names.remove_prefix(names.find(' ') + 1);
        }
        return reason == KelImportReason::none ? "" : " " + std::string(names.substr(0, names.find(' ')));
    }

    static std::string textOf(const KelObject* object) {
        if (object == nullptr) {
            return "";
        }
        return std::string(" ") + object->getMetaClass().getClassName() + " \"" + object->getName().text() + "\"";
    }

    void add(const KelImportSource* by, const char* step, KelImportReason why, const KelObject* object,
             const KelObject* other = nullptr) {
        std::string keyword = by != nullptr ? std::string(file_.substr(by->begin, by->end - by->begin)) : "";
        keyword.resize(std::min(keyword.size(), keyword.find('\n')));
        if (by != nullptr && by->rule != 0) {
            const std::string announced(rose::patterns[static_cast<std::size_t>(by->rule) - 1].literal.first);
            keyword += keyword.find(announced) == std::string::npos ? " of " + announced : "";
        }
        const std::string line = keyword + (keyword.empty() ? "" : ": ") + step + nameOf(why) + textOf(object) +
                                 (other != nullptr ? "," : "") + textOf(other) + "\n";
        if (why == KelImportReason::attachedToNothing) {
            unordered_.insert(line);
        } else {
            lines_ += line;
        }
    }

    void made(const KelImportSource& by, KelObject& object) override {
        add(&by, "made", KelImportReason::none, &object);
    }
    void named(const KelImportSource& by, KelObject& object) override {
        add(&by, "named", KelImportReason::none, &object);
    }
    void changed(const KelImportSource& by, KelObject& object, KelObject* other, KelImportReason why) override {
        add(&by, "changed", why, &object, other);
    }
    void refused(const KelImportSource& by, KelImportReason why, KelObject* object, KelObject* other) override {
        add(&by, "refused", why, object, other);
    }
    void gate(const KelImportSource& at, KelImportReason why) override { add(&at, "gate", why, nullptr); }
    void repaired(KelObject& object, KelImportReason why, KelObject* other) override {
        add(nullptr, "repaired", why, &object, other);
    }
    void replaced(KelObject& object, KelImportReason why, KelObject& by) override {
        add(nullptr, "replaced", why, &object, &by);
    }
    void removing(KelObject& object, KelImportReason why) noexcept override { add(nullptr, "removing", why, &object); }

    std::string_view file_;
    std::string lines_;
    std::multiset<std::string> unordered_; // of what has no owner: in no particular order
};
