#include "petal/Failure.h"
#include "petal/commands.h"
#include "petal/import/InputFile.h"
#include "petal/info/gatherFileInfo.h"
#include "petal/info/infoForms.h"
#include "petal/output/ModelOutput.h"
#include "petal/output/fileFailure.h"
#include "text/Output.h"

namespace petal {

namespace {

/// Writes the infos of the files in the requested form.
class Form {
public:
    Form(text::BufferedOutput& output, bool asJson) : output_(output), json_(output), asJson_(asJson) {
        if (asJson_) {
            json_.startList();
        }
    }

    void write(const std::string& path, const FileInfo& info) {
        if (asJson_) {
            writeInfoJson(path, info, json_);
        } else {
            output_.put(infoText(path, info));
        }
    }
    void writeFailure(const std::string& path, const Failure& failure) {
        if (!asJson_) {
            return;
        }
        json_.startObject();
        json_.key("file");
        json_.text(path);
        json_.key("error");
        json_.text(failure.what());
        json_.endObject();
    }
    void end() {
        if (asJson_) {
            json_.endList();
            output_.put('\n');
        }
        output_.flush();
    }

private:
    text::BufferedOutput& output_;
    text::IndentedJson json_;
    bool asJson_;
};

FileInfo infoOf(const std::string& path) {
    InputFile file(path);
    FileInfo info = gatherFileInfo(file);
    if (!info.isModel) {
        throw Failure(Outcome::inputNotRead, "'" + path + "' is not a model file", foreignFormatAdvice(file.getHead()));
    }
    return info;
}

/// Writes the infos of all files, and reports the files that cannot be read. Returns how many those are.
std::size_t write(const InfoRequest& request, Form& form) {
    std::size_t failures = 0;
    for (const std::string& path : request.files) {
        try {
            form.write(path, infoOf(path));
        } catch (const Failure& failure) {
            if (request.files.size() == 1 && !request.asJson) {
                throw;
            }
            ++failures;
            printFailure(failure.what(), failure.getAdvice());
            form.writeFailure(path, failure);
        }
    }
    form.end();
    return failures;
}

} // namespace

void printInfo(const InfoRequest& request) {
    std::size_t failures = 0;
    try {
        const auto output = ModelOutput::open(std::nullopt);
        text::BufferedOutput buffered(*output);
        Form form(buffered, request.asJson);
        failures = write(request, form);
        output->commit();
    } catch (const std::system_error& error) {
        throw outputFailure("standard output", error);
    }
    if (failures > 0) {
        throw Failure(
            request.files.size() == 1 ? Outcome::inputNotRead : Outcome::someFailed,
            std::to_string(failures) + " of " + std::to_string(request.files.size()) + " files could not be read", "");
    }
}

} // namespace petal
