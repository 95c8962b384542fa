#include "model/Associations.h"
#include "model/Classes.h"
#include "model/Features.h"
#include "model/ModelWriter.h"
#include "model/Names.h"
#include "model/Packages.h"
#include "model/shapes/shapeFunctions.h"

namespace bench {

namespace {

constexpr std::size_t qualifiers = 4;

RoleText role(std::uint64_t number, std::vector<std::string> keys) {
    return {.name = "of",
            .supplier = "Logical View::" + packageName(0) + "::" + className(number),
            .cardinality = "1",
            .qualifiers = std::move(keys)};
}

} // namespace

/// Two associations qualify the same class by the same attributes, so the class at the other end gets two foreign
/// keys that share theirs. An import gives the second key attributes of its own.
void attributesInTwoKeys(ModelWriter& writer) {
    beginPackage(writer, writer.nextPackage++);
    while (writer.wantsMore(writer.nextFeature)) {
        const std::uint64_t qualified = writer.nextClass++;
        const std::uint64_t other = writer.nextClass++;
        emptyClass(writer, qualified);
        emptyClass(writer, other);
        std::vector<std::string> keys;
        for (std::size_t count = 0; count != qualifiers; ++count) {
            keys.push_back(featureName(writer.nextFeature++));
        }
        for (int count = 0; count != 2; ++count) {
            association(writer, writer.nextAssociation++, role(other, {}), role(qualified, keys));
        }
        writer.counts.add(Counted::candidateKeys);
        writer.counts.add(Counted::foreignKeys, 2);
        writer.counts.add(Counted::rolesForeignKeys, 2);
        writer.counts.add(Counted::attributes, 3 * qualifiers); // two classes, and the second key's own
        writer.counts.add(Counted::types, 3 * qualifiers);
        writer.counts.add(Counted::keyAttributes, 3 * qualifiers);
        writer.counts.add(Counted::roleNameMaps, qualifiers);
        writer.declareType(intType);
    }
    beginDiagrams(writer);
    endPackage(writer);
}

} // namespace bench
