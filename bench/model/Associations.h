#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

struct ModelWriter;

/// One end of an association.
struct RoleText {
    std::string name;
    std::string supplier; ///< the name of the class there
    std::string_view cardinality;
    bool isNavigable = true;
    bool isAggregate = false;
    std::vector<std::string> qualifiers{}; ///< the attributes that a key of the class there gets; counted by the caller
};

void association(ModelWriter& writer, std::uint64_t number, const RoleText& first, const RoleText& second);

/// Draws an association that has been written; the last two numbers are those of the views of its classes.
void associationView(ModelWriter& writer, std::uint64_t number, std::uint64_t firstClass, std::uint64_t secondClass);

/// Draws it with nothing but what says which one it is, for models that draw millions.
void leanAssociationView(ModelWriter& writer, std::uint64_t number);

} // namespace bench
