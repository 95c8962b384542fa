#include "ModelBuilding.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelOperation.h"
#include "support/Written.h"

#include <gtest/gtest.h>
#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <random>
#include <set>

namespace {

/// Reads a document without a stack of its own and checks its ids.
class IdReader : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, IdReader> {
public:
    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        key_.assign(text, length);
        lossy |= key_ == "lossy";
        return true;
    }
    bool Uint(unsigned number) {
        if (key_ == "id") {
            inOrder &= number == ++count;
        } else if (references.contains(key_)) {
            highestReference = std::max(highestReference, number);
        }
        return true;
    }
    bool StartObject() {
        deepest = std::max(deepest, ++depth_);
        return true;
    }
    bool EndObject(rapidjson::SizeType /*members*/) {
        --depth_;
        return true;
    }

    static inline const std::set<std::string> references{"type", "returnType", "derivedFrom", "class", "elements"};
    unsigned count = 0;
    unsigned highestReference = 0;
    bool inOrder = true;
    bool lossy = false;
    int deepest = 0;

private:
    std::string key_;
    int depth_ = 0;
};

IdReader read(const std::string& text) {
    IdReader handler;
    rapidjson::MemoryStream stream(text.data(), text.size());
    rapidjson::Reader reader;
    const rapidjson::ParseResult result =
        reader.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag>(stream, handler);
    EXPECT_FALSE(result.IsError()) << rapidjson::GetParseError_En(result.Code()) << " at byte " << result.Offset();
    return handler;
}

/// A model of random shape with names of random bytes.
class RandomModel {
public:
    explicit RandomModel(unsigned seed) : random_(seed) {
        for (int made = below(6); made > 0; --made) {
            auto* type = new KelDerivedType;
            type->setName(text());
            model.addType(type);
        }
        packages_.push_back(&model);
        for (int made = below(12); made > 0; --made) {
            auto* package = new KelDesignPackage;
            package->setName(text());
            packages_[static_cast<std::size_t>(below(static_cast<int>(packages_.size())))]->addChildPackage(package);
            packages_.push_back(package);
            fill(*package);
        }
    }

    KelModel model;
    bool hasInvalidText = false;
    unsigned objectCount = 1;

private:
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    KelString text() {
        ++objectCount; // one text is made for each object
        std::string bytes;
        for (int length = below(8); length > 0; --length) {
            if (below(40) == 0) {
                hasInvalidText = true;
                bytes += "\xFF";
            } else {
                bytes += below(8) == 0 ? "\xE4\xB8\xAD" : std::string(1, static_cast<char>(below(128)));
            }
        }
        return KelString(std::string_view(bytes));
    }

    template <class T>
    T* add(KelDesignPackage& package) {
        T* element = new T;
        element->setName(text());
        package.addModelElement(element);
        return element;
    }

    void fill(KelDesignPackage& package) {
        auto* diagram = new KelClassDiagram;
        diagram->setName(text());
        package.addDiagram(diagram);
        KelClass* last = nullptr;
        for (int made = below(5); made > 0; --made) {
            last = add<KelClass>(package);
            diagram->addModelElement(last);
            auto* attribute = new KelAttribute;
            attribute->setName(text());
            attribute->position = static_cast<std::int16_t>(below(3));
            last->addAttribute(attribute);
            attribute->addType(model.types()[below(6)]);
            auto* operation = new KelOperation;
            operation->setName(text());
            last->addOperation(operation);
            auto* argument = new KelArgument;
            argument->setName(text());
            operation->addArgument(argument);
        }
        auto* association = add<KelAssociation>(package);
        for (int made = below(3); made > 0; --made) {
            auto* role = new KelAssociationRole;
            role->setName(text());
            association->addAssociationRole(role);
            role->addAssociatedClass(last);
        }
    }

    std::mt19937 random_;
    std::vector<KelPackage*> packages_;
};

TEST(JsonProperties, EveryDocumentParsesAndCountsItsObjects) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        const RandomModel random(seed);
        MemoryOutput output;
        writeAs("json", random.model, output);
        const IdReader document = read(output.text);
        ASSERT_TRUE(document.inOrder) << "seed " << seed << "\n" << output.text;
        ASSERT_EQ(document.count, random.objectCount) << "seed " << seed;
        ASSERT_LE(document.highestReference, document.count) << "seed " << seed;
        ASSERT_EQ(document.lossy, random.hasInvalidText) << "seed " << seed;
    }
}

TEST(JsonProperties, DepthCostsNeitherStackNorWidth) {
    constexpr int depth = 100000;
    KelModel model;
    KelPackage* innermost = &model;
    for (int made = 0; made < depth; ++made) {
        innermost = &addPackage(*innermost, "p");
    }
    MemoryOutput output;
    writeAs("json", model, output);
    const IdReader document = read(output.text);
    EXPECT_TRUE(document.inOrder);
    EXPECT_EQ(document.count, depth + 1U);
    EXPECT_EQ(document.deepest, depth + 2);
    EXPECT_EQ(output.text.find(std::string(41, ' ')), std::string::npos) << "indentation above 40 spaces";
    EXPECT_LE(output.longestWrite, 64U * 1024) << "written in pieces";
}

} // namespace
