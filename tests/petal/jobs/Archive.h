#pragma once

#include "petal/Shell.h"

#include <rapidjson/document.h>

/// petal with a bridge made for tests, and some model files for it.
class Archive : public Shell {
protected:
    Archive() : Shell(PETAL_FAKE_PLUGIN) {}

    using Names = std::set<std::string>;

    static constexpr const char* good = "package A\npackage B\n";
    static constexpr const char* outline = "model made by the fake\n  package A\n  package B\n";

    /// What a report says of each file: "FILE STATE" and, if it has one, a reason.
    [[nodiscard]] std::vector<std::string> statesIn(std::string_view report) const {
        rapidjson::Document document;
        document.Parse(get(report).c_str());
        std::vector<std::string> states;
        if (document.HasParseError()) {
            ADD_FAILURE() << "no report: " << get(report);
            return states;
        }
        for (const auto& file : document["files"].GetArray()) {
            states.push_back(std::string(file["file"].GetString()) + " " + file["state"].GetString());
            if (file.HasMember("reason")) {
                states.back() += std::string(" ") + file["reason"].GetString();
            }
        }
        return states;
    }
};

inline bool contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}
