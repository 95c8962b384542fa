// Models as UML, as text and as the metamodel of UML understands them.

#include "Shop.h"
#include "export/ClassKind.h"
#include "export/ClassNames.h"
#include "export/relationships.h"
#include "host/model/KelTraversalOperation.h"
#include "scanner/RealModels.h"
#include "support/HostileTexts.h"
#include "support/ImportedModel.h"
#include "support/InFolder.h"
#include "support/Written.h"
#include "support/skipWithout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <regex>
#include <set>
#include <unistd.h>
#include <utility>

namespace {

using exporter::ClassKind;
using exporter::Omissions;
using Settings = std::vector<std::string>;

/// The document without ids and without the prefix of types, so that it is short.
std::string written(const KelModel& model, const Settings& settings = {}) {
    static const std::regex ids(R"( xmi:id="[^"]*")");
    static const std::regex types("xmi:type=\"(uml|ecore):");
    return std::regex_replace(std::regex_replace(writtenAs("uml", model, settings), ids, ""), types, "type=\"");
}

/// The lines with `part`, without indentation.
std::string linesWith(std::string_view text, std::string_view part) {
    std::istringstream lines{std::string(text)};
    std::string found;
    for (std::string line; std::getline(lines, line);) {
        if (line.find(part) != std::string::npos) {
            found += line.substr(std::min(line.find_first_not_of(' '), line.size())) + "\n";
        }
    }
    return found;
}

std::string told(const KelModel& model, const Settings& settings = {}) {
    const exporter::Exporter& exporter = *exporter::findExporter("uml");
    const exporter::OptionValues options(exporter.options, settings);
    MemoryOutput output;
    FolderOfOne folder(output);
    Omissions omissions;
    exporter.write({.model = model, .options = options, .folder = folder, .omissions = omissions});
    return omissions.summary();
}

TEST(Uml, WritesTheExampleAsBefore) {
    const ImportedModel imported = ImportedModel::ofFile(PETAL_EXAMPLES "/everything.mdl");
    const std::string text = writtenAs("uml", imported.model);
    const std::string expected = rose::test::contents(PETAL_METAMODEL "/../everything.uml");
    if (text != expected) {
        const std::string path = testing::TempDir() + "everything.uml";
        std::ofstream(path, std::ios::binary) << text;
        FAIL() << "differs from tests/export/everything.uml, see " << path;
    }
    EXPECT_EQ(writtenAs("uml", imported.model), text);
}

class UmlForms : public testing::Test {
protected:
    KelClass& add(const char* name, const char* stereotype = "",
                  KelClassCategoryType category = KelClassCategoryType::classObject) {
        auto& one = addElement<KelClass>(package, name);
        one.stereotype = stereotype;
        one.categoryType = category;
        return one;
    }
    KelAssociation& join(const char* name, KelClass* first, KelClass* second) {
        auto& association = addElement<KelAssociation>(package, name);
        addRole(association, "first", first);
        addRole(association, "second", second);
        return association;
    }

    KelModel model;
    KelDesignPackage& package = addPackage(model, "P");
};

TEST_F(UmlForms, KindsAndKeywords) {
    using enum KelClassCategoryType;
    add("a", "Interface");
    add("b", "enum");
    add("c", "struct");
    add("d", "typedef");
    add("e", "actor");
    add("f", "Business Actor").addOperation(named<KelOperation>("o"));
    add("g", "boundary");
    add("h", "entity", interface);
    add("i", "", parameterizedClassUtility);
    add("j", "entity", metaclass);
    const std::string text = written(model, {"stereotype.entity=datatype"});
    const auto has = [&](const char* start, const char* annotation) {
        const std::size_t at = text.find(start);
        ASSERT_NE(at, std::string::npos) << start;
        const std::string element = text.substr(at, text.find("</packagedElement", at) - at);
        EXPECT_EQ(element.find(annotation) != std::string::npos, true) << start << "\n" << element;
        EXPECT_EQ(element.find("eAnnotations") != std::string::npos, *annotation != '\0') << element;
    };
    has(R"(type="Interface" name="a")", "");
    has(R"(type="Enumeration" name="b")", R"(key="stereotype" value="enum")");
    has(R"(type="DataType" name="c")", R"(key="stereotype" value="struct")");
    has(R"(type="PrimitiveType" name="d")", R"(key="stereotype" value="typedef")");
    has(R"(type="Actor" name="e")", "");
    has(R"(type="Class" name="f")", R"(2.0.0/UML"><details type="EStringToStringMapEntry" key="Business Actor"/>)");
    has(R"(type="Class" name="g")", R"(key="boundary"/>)");
    has(R"(type="DataType" name="h")", R"(key="stereotype" value="entity")");
    has(R"(type="Class" name="i")", R"(key="utility"/>)");
    has(R"(type="DataType" name="j")", R"(key="metaclass"/>)");
}

TEST_F(UmlForms, ValuesOfEnumerations) {
    KelClass& colours = add("Colours", "enumeration");
    const auto addValue = [&](const char* name, const char* value) -> KelAttribute& {
        auto* attribute = named<KelAttribute>(name);
        attribute->position = static_cast<std::int16_t>(colours.getAttributeCount());
        attribute->initialValue = value;
        colours.addAttribute(attribute);
        return *attribute;
    };
    for (const char* value : {"0", "-7", "007", "2147483648", "x < 1"}) { // the fourth is too long for an Integer
        addValue(value, value);
    }
    KelAttribute& rich = addValue("rich", "");
    auto* type = named<KelDerivedType>("int");
    model.addType(type);
    rich.addType(type);
    rich.visibility = 3;
    rich.containment = 1;
    rich.isStatic = rich.isDerived = true;
    const std::string details = R"(<details type="EStringToStringMapEntry" key=)";
    EXPECT_EQ(linesWith(written(model), "ownedLiteral"),
              R"(<ownedLiteral type="EnumerationLiteral" name="0"><specification type="LiteralInteger"/></ownedLiteral>
<ownedLiteral type="EnumerationLiteral" name="-7"><specification type="LiteralInteger" value="-7"/></ownedLiteral>
<ownedLiteral type="EnumerationLiteral" name="007"><specification type="OpaqueExpression"><body>007</body></specification></ownedLiteral>
<ownedLiteral type="EnumerationLiteral" name="2147483648"><specification type="OpaqueExpression"><body>2147483648</body></specification></ownedLiteral>
<ownedLiteral type="EnumerationLiteral" name="x &lt; 1"><specification type="OpaqueExpression"><body>x &lt; 1</body></specification></ownedLiteral>
<ownedLiteral type="EnumerationLiteral" name="rich" visibility="package"><eAnnotations type="EAnnotation" source="petal">)" +
                  details + R"("visibility" value="implementation"/>)" + details + R"("type" value="int"/>)" + details +
                  R"("containment" value="byReference"/>)" + details + R"("static" value="true"/>)" + details +
                  R"("derived" value="true"/></eAnnotations></ownedLiteral>
)");
}

TEST_F(UmlForms, EndsAndTheirBounds) {
    KelClass& whole = add("Whole");
    KelClass& part = add("Part");
    KelAssociation& association = join("", &whole, &part);
    association.associationRoles()[0]->isAggregate = association.associationRoles()[0]->isSource = true;
    KelAssociationRole& role = *association.associationRoles()[1];
    role.isNavigable = true;
    role.containment = 0;
    constexpr std::array<std::array<const char*, 3>, 8> rows{{
        {"1", R"(" value="1"/>)", R"(" value="1"/>)"},
        {"n", R"("/>)", R"(" value="*"/>)"},
        {"0..*", R"("/>)", R"(" value="*"/>)"},
        {"2..N", R"(" value="2"/>)", R"(" value="*"/>)"},
        {"0", R"("/>)", R"("/>)"},
        {"1,3..5", R"(" value="1"/>)", R"(" value="5"/>)"},
        {"some", nullptr, "<body>some</body>"},
        {"", nullptr, R"(key="multiplicity" value="unspecified")"},
    }};
    for (const auto& [multiplicity, lower, upper] : rows) {
        role.multiplicity = multiplicity;
        const std::string line = linesWith(written(model), R"(name="second")");
        EXPECT_TRUE(line.starts_with(R"(<ownedAttribute type="Property" name="second" type="n)")) << line;
        EXPECT_NE(line.find(R"(aggregation="composite")"), std::string::npos);
        const std::string values = lower == nullptr ? upper
                                                    : R"(<lowerValue type="LiteralInteger)" + std::string(lower) +
                                                          R"(<upperValue type="LiteralUnlimitedNatural)" + upper;
        EXPECT_NE(line.find(values), std::string::npos) << values << "\n" << line;
        EXPECT_EQ(line.find("lowerValue") == std::string::npos, lower == nullptr);
    }
    association.isAggregation = true;
    whole.stereotype = "actor"; // with an end of its own it is a class
    for (const char* flavour : {"flavour=omg", "flavour=xmi21"}) {
        const std::string text = written(model, {flavour});
        const int ownEnds = std::string_view(flavour) == "flavour=xmi21" ? 2 : 1;
        EXPECT_EQ(std::ranges::count(linesWith(text, "<ownedEnd"), '\n'), ownEnds);
        EXPECT_EQ(std::ranges::count(linesWith(text, "<memberEnd xmi:idref="), '\n'), 2);
        EXPECT_EQ(std::ranges::count(linesWith(text, "<navigableOwnedEnd xmi:idref="), '\n'), ownEnds - 1);
        EXPECT_EQ(linesWith(text, "<eAnnotations"), linesWith(text, "<xmi:Extension"));
    }
}

TEST_F(UmlForms, BindsTemplatesThatItFinds) {
    using enum KelClassCategoryType;
    KelClass& pool = add("Pool", "", parameterizedClass);
    pool.addArgument(named<KelArgument>("K"));
    pool.addArgument(named<KelArgument>("V"));
    add("Item");
    model.addType(named<KelBaseType>("int"));
    for (const char* name :
         {"Pool<Item, int>", "(java.util.Pool<P::Item>)", "Pool", "Pool<Lost>", "Pool<Item,Item,int>", "Other<Item>"}) {
        add(name, "", instantiatedClass);
    }
    const std::string text = written(model);
    EXPECT_EQ(std::ranges::count(linesWith(text, "<templateBinding"), '\n'), 3);
    EXPECT_EQ(std::ranges::count(linesWith(text, "key=\"bind\""), '\n'), 3);
    const std::string library = linesWith(written(model, {"primitives=uml"}), "<actual");
    EXPECT_NE(library.find(R"(<actual type="PrimitiveType" href="pathmap://UML_LIBRARIES/)"
                           R"(UMLPrimitiveTypes.library.uml#Integer"/>)"),
              std::string::npos)
        << library;
}

TEST_F(UmlForms, FoldsAssociationClassesWithoutDoubt) {
    KelClass& a = add("A");
    KelClass& b = add("B");
    KelClass& n = add("N");
    join("holds", &a, &b).description = "who holds what";
    join("A_N", &a, &n);
    KelAssociation& second = join("N_B", &n, &b);
    std::string text = written(model);
    EXPECT_EQ(linesWith(text, R"(<packagedElement type="Association")"), "");
    EXPECT_EQ(std::ranges::count(linesWith(text, "<ownedEnd"), '\n'), 2);
    EXPECT_FALSE(linesWith(text, R"(type="AssociationClass" name="N" memberEnd=)").empty()) << text;
    EXPECT_NE(text.find("<body>who holds what</body>"), std::string::npos);
    EXPECT_EQ(told(model), "");
    text = written(model, {"association-class=split"});
    EXPECT_EQ(std::ranges::count(linesWith(text, R"(type="Association")"), '\n'), 3);
    second.setName("B_N");
    EXPECT_EQ(told(model), ""); // none at all
    second.setName("N_B");
    join("twice", &b, &a);
    EXPECT_EQ(told(model), "1 association class");
    EXPECT_EQ(written(model).find("AssociationClass"), std::string::npos);
}

TEST_F(UmlForms, TellsWhatItLeavesOut) {
    KelClass& a = add("A");
    KelClass& b = add("B");
    for (const KelClass* super : {&a, &b, &b}) {
        auto& generalization = addElement<KelGeneralization>(package, "");
        generalization.addSubtypeClass(&a);
        generalization.addSupertypeClass(const_cast<KelClass*>(super));
    }
    addElement<KelGeneralization>(package, "").addSubtypeClass(&b);
    addElement<KelRealization>(package, "").addRealizationClass(&a);
    addElement<KelDependency>(package, "").addSupplierClass(&a);
    package.addDiagram(named<KelClassDiagram>("Main"));
    package.diagrams().first()->addNote(note("kept\x02"));
    for (const char* dataType : {"SQL_INTEGER", "SQL_INTEGER", "SQL_BINARY"}) {
        auto* type = named<KelBaseType>("t");
        type->dataType = dataType;
        model.addType(type);
    }
    auto* shadowed = named<KelBaseType>("A");
    shadowed->dataType = "SQL_DATE";
    model.addType(shadowed);
    EXPECT_EQ(told(model), "2 types, 3 generalizations, 1 realization, 1 dependency, 1 class diagram, 1 character");
    const std::string text = written(model);
    EXPECT_EQ(std::ranges::count(linesWith(text, "<generalization"), '\n'), 1);
    EXPECT_NE(text.find(R"(key="left out: generalizations: another one says the same" value="1")"), std::string::npos);
    EXPECT_NE(text.find("<body>kept\uFFFD</body>"), std::string::npos);
}

TEST(Uml, AnAttributeLessChangesThreeLines) {
    ImportedModel imported = ImportedModel::ofFile(PETAL_EXAMPLES "/everything.mdl");
    const auto linesOf = [&] {
        std::istringstream text(writtenAs("uml", imported.model));
        std::multiset<std::string> lines;
        for (std::string line; std::getline(text, line);) {
            lines.insert(line);
        }
        return lines;
    };
    struct Attributes final : KelTraversalOperation {
        void post_process(KelObject* object, void* /*userData*/) override {
            if (object->elementType == KelElementType::attribute) {
                all.push_back(static_cast<KelAttribute*>(object));
            }
        }
        std::vector<KelAttribute*> all;
    } attributes;
    imported.model.depthTraversal(attributes, nullptr);
    ASSERT_GT(attributes.all.size(), 10U);
    std::multiset<std::string> before = linesOf();
    for (KelAttribute* attribute : attributes.all) {
        KelType* type = attribute->getType();
        attribute->recursiveDelete();
        if (type != nullptr && type->features().isEmpty() && type->arguments().isEmpty() &&
            type->operations().isEmpty() && static_cast<KelConcreteType*>(type)->derivedTypes().isEmpty()) {
            type->recursiveDelete();
        }
        const std::multiset<std::string> after = linesOf();
        std::vector<std::string> changed;
        std::ranges::set_difference(before, after, std::back_inserter(changed));
        EXPECT_LE(changed.size(), 3U) << testing::PrintToString(changed);
        EXPECT_LE(after.size(), before.size());
        before = after;
    }
}

TEST(Uml, PassesOnAFailureOfItsOutput) {
    const Shop shop;
    MemoryOutput output(0);
    EXPECT_THROW(writeAs("uml", shop.model, output), std::system_error);
}

/// How many elements of each metaclass a model makes without association classes, by the rules of the documentation.
class Expected final : public KelTraversalOperation {
public:
    explicit Expected(KelModel& model) : names_(model) {
        counts["Model"] = 1;
        counts["Package"] = model.isEmpty() ? 0 : 1; // of the types
        model.depthTraversal(*this, nullptr);
        counts["Generalization"] = static_cast<int>(pairs_.size());
    }
    std::map<std::string, int> counts;

private:
    void post_process(KelObject* one, void* /*userData*/) override {
        using enum KelElementType;
        if (one->isInstanceOf(modelObject)) {
            counts["Comment"] += static_cast<KelModelObject*>(one)->description.isEmpty() ? 0 : 1;
            counts["Comment"] += static_cast<KelModelObject*>(one)->notes().count();
        }
        if (one->elementType == designPackage) {
            ++counts["Package"];
        } else if (one->elementType == classObject) {
            count(static_cast<KelClass&>(*one));
        } else if (one->elementType == association) {
            ++counts["Association"];
            counts["Property"] += std::max(2, static_cast<KelAssociation*>(one)->associationRoles().count());
        } else if (one->elementType == associationRole) {
            const auto& role = static_cast<KelAssociationRole&>(*one);
            const bool isOdd = !role.multiplicity.isEmpty() && !exporter::boundsOf(role.multiplicity.view());
            counts["Comment"] += isOdd ? 1 : 0;
            for (const KelForeignKey* key : role.foreignKeys()) {
                counts["Property"] += key->attributes().count(); // qualifiers
            }
        } else if (one->elementType == generalization) {
            for (const auto& pair : exporter::inheritancesOf(static_cast<KelGeneralization&>(*one))) {
                pairs_.emplace(pair.subtype, pair.supertype);
            }
        } else if (one->elementType == realization) {
            count(static_cast<KelRealization&>(*one));
        } else if (one->elementType == dependency) {
            const auto& link = static_cast<KelDependency&>(*one);
            counts["Dependency"] += link.getClientClass() != nullptr && link.getSupplierClass() != nullptr ? 1 : 0;
        } else if (one->isInstanceOf(type) && names_.find(static_cast<KelType*>(one)) == nullptr &&
                   types_.emplace(one->getName().view()).second) {
            const int values = static_cast<KelType*>(one)->getTypeValueCount();
            ++counts[values > 0 ? "Enumeration" : "PrimitiveType"];
            counts["EnumerationLiteral"] += values;
        }
    }

    [[nodiscard]] std::string metaclassOf(const KelClass& one) const {
        static const std::map<ClassKind, std::string> metaclasses{{ClassKind::interface, "Interface"},
                                                                  {ClassKind::enumeration, "Enumeration"},
                                                                  {ClassKind::datatype, "DataType"},
                                                                  {ClassKind::primitive, "PrimitiveType"},
                                                                  {ClassKind::actor, "Actor"}};
        const auto found = metaclasses.find(kinds_.kindOf(one));
        bool isActor = one.attributes().isEmpty() && one.operations().isEmpty();
        for (const KelAssociationRole* role : one.associationRoles()) {
            const auto roles = role->getAssociation()->associationRoles();
            isActor = isActor && (roles.count() != 2 || !roles[roles[0] == role ? 1 : 0]->isNavigable);
        }
        const bool isClass = found == metaclasses.end() || (found->first == ClassKind::actor && !isActor);
        return isClass ? "Class" : found->second;
    }

    void count(const KelClass& one) {
        const std::string metaclass = metaclassOf(one);
        ++counts[metaclass];
        counts[metaclass == "Enumeration" ? "EnumerationLiteral" : "Property"] += one.attributes().count();
        counts["Class"] += one.arguments().count(); // template parameters
        for (const KelOperation* operation : one.operations()) {
            ++counts["Operation"];
            counts["Parameter"] += operation->arguments().count() + (operation->getReturnType() != nullptr ? 1 : 0);
            counts["Comment"] += operation->semantics.isEmpty() ? 0 : 1;
            counts["Constraint"] +=
                (operation->precondition.isEmpty() ? 0 : 1) + (operation->postcondition.isEmpty() ? 0 : 1);
        }
        counts["Constraint"] += one.keys().count() - (one.getPrimaryKey() != nullptr ? 1 : 0);
    }

    void count(const KelRealization& realization) {
        const KelClass* client = realization.getRealizationClass();
        const KelClass* specification = realization.getSpecificationClass();
        if (client != nullptr && specification != nullptr) {
            const bool isOfInterface = metaclassOf(*specification) == "Interface" && metaclassOf(*client) == "Class";
            ++counts[isOfInterface ? "InterfaceRealization" : "Realization"];
        }
    }

    const exporter::ClassNames names_;
    const exporter::ClassKinds kinds_;
    std::set<std::pair<const KelClass*, const KelClass*>> pairs_;
    std::set<std::string, std::less<>> types_;
};

void addHostileTexts(KelModel& model) {
    std::vector<std::string> texts(hostileTexts.begin(), hostileTexts.end());
    texts.push_back(longHostileText());
    for (const std::string& text : texts) {
        auto& package = addPackage(model, text.c_str());
        auto& one = addElement<KelClass>(package, (text + text).c_str());
        one.stereotype = one.description = text.c_str();
        one.addNote(note(text.c_str()));
        auto* type = named<KelBaseType>(text.c_str());
        model.addType(type);
        auto* attribute = named<KelAttribute>(text.c_str());
        attribute->addType(type);
        attribute->initialValue = text.c_str();
        one.addAttribute(attribute);
        auto& association = addElement<KelAssociation>(package, text.c_str());
        for (int count = 0; count < 2; ++count) {
            auto& role = addRole(association, text.c_str(), &one);
            role.multiplicity = text.c_str();
            role.isNavigable = count > 0;
        }
    }
}

void addOddModel(KelModel& model) {
    addNested(model, 10'000);
    auto& package = addPackage(model, "");
    auto& one = addElement<KelClass>(package, "same");
    addElement<KelClass>(package, "same").stereotype = "actor";
    for (int roles = 0; roles <= 3; ++roles) {
        auto& association = addElement<KelAssociation>(package, "");
        for (int count = 0; count < roles; ++count) {
            addRole(association, "", count == 1 ? nullptr : &one).isNavigable = true;
        }
    }
    for (int count = 0; count < 2; ++count) {
        auto& generalization = addElement<KelGeneralization>(package, "");
        for (KelModelElement* element : {package.modelElements()[0], package.modelElements()[1]}) {
            generalization.addSubtypeClass(static_cast<KelClass*>(element));
            generalization.addSupertypeClass(static_cast<KelClass*>(element));
        }
    }
}

class UmlConsumer : public InFolder {
protected:
    /// Writes the model; `counted`: its elements are compared with the rules.
    void put(const std::string& name, KelModel& model, bool counted, const Settings& settings) {
        const std::string path = InFolder::put(name + ".uml", writtenAs("uml", model, settings));
        paths += " '" + path + "'";
        if (counted) {
            expected[path] = Expected(model).counts;
        }
    }
    void put(const std::filesystem::path& file, int number) {
        ImportedModel imported = ImportedModel::ofFile(file);
        if (imported.failure.empty()) {
            const std::string name = std::to_string(number) + file.stem().string();
            put(name, imported.model, true, {"association-class=split"});
            put(name + "-folded", imported.model, false, {"primitives=uml"});
        }
    }

    /// Loads all files with the metamodel, and keeps what it says.
    void load() {
        const std::string jars = "/usr/share/java/eclipse-emf-";
        const std::string command = "java -cp " + jars + "common.jar:" + jars + "ecore.jar:" + jars +
                                    "ecore-xmi.jar " PETAL_METAMODEL "/CheckUml.java " PETAL_METAMODEL + paths +
                                    " 2>&1";
        std::FILE* output = ::popen(command.c_str(), "r");
        std::string text;
        for (int byte = std::fgetc(output); byte != EOF; byte = std::fgetc(output)) {
            text += static_cast<char>(byte);
        }
        EXPECT_EQ(::pclose(output), 0) << text;
        std::istringstream lines(text);
        for (std::string path, kind, rest;
             std::getline(lines, path, '\t') && std::getline(lines, kind, '\t') && std::getline(lines, rest);) {
            if (kind == "count") {
                found[path][rest.substr(0, rest.find('='))] = std::stoi(rest.substr(rest.find('=') + 1));
            } else if (kind == "text") {
                texts.insert(rest);
            } else {
                ADD_FAILURE() << path << ": " << kind << " " << rest;
            }
        }
    }

    std::string paths;
    std::map<std::string, std::map<std::string, int>> expected, found; // by path
    std::set<std::string> texts;                                       // "FEATURE\tHEX"
};

std::string hexOf(std::string_view text) {
    std::string digits;
    for (const char byte : text) {
        std::array<char, 3> pair{};
        std::snprintf(pair.data(), pair.size(), "%02x", static_cast<unsigned char>(byte));
        digits += pair.data();
    }
    return digits;
}

TEST_F(UmlConsumer, FindsNoFaultAndTheSameElements) {
    if (::access("/usr/bin/java", X_OK) != 0 || ::access("/usr/share/java/eclipse-emf-ecore-xmi.jar", R_OK) != 0) {
        return rose::test::skipWithout("no java, or no libeclipse-emf-ecore-xmi-java");
    }
    int number = 0;
    std::vector<std::filesystem::path> files = rose::test::realModels();
    for (const char* example : {"bookshop", "everything"}) {
        files.push_back(std::filesystem::path(PETAL_EXAMPLES) / (std::string(example) + ".mdl"));
    }
    for (const std::filesystem::path& file : files) {
        put(file, ++number);
    }
    Shop shop;
    put("shop", shop.model, false, {});
    KelModel empty;
    put("empty", empty, true, {});
    KelModel odd;
    addOddModel(odd);
    put("odd", odd, true, {});
    KelModel hostile;
    addHostileTexts(hostile);
    put("hostile", hostile, true, {});
    load();
    for (auto& [path, counts] : expected) {
        for (const auto& [metaclass, count] : counts) {
            EXPECT_EQ(found[path][metaclass], count) << path << " " << metaclass;
        }
    }
    for (const std::string_view text : hostileTexts) {
        const std::string shown = text == "\x01" ? "\uFFFD"
                                  : text == "a\xFF"
                                            "b"
                                      ? "a\uFFFDb"
                                      : std::string(text);
        for (const char* feature : {"Package.name", "PrimitiveType.name", "Property.name", "Association.name",
                                    "Comment.body", "OpaqueExpression.body", "EStringToStringMapEntry.key"}) {
            EXPECT_TRUE(shown.empty() || texts.contains(std::string(feature) + "\t" + hexOf(shown)))
                << feature << " " << text;
        }
        EXPECT_TRUE(shown.empty() || texts.contains("Class.name\t" + hexOf(shown + shown))) << text;
    }
    if (files.size() == 2) {
        GTEST_SKIP() << "tried on the examples alone: " << rose::test::noRealModels;
    }
}

} // namespace
