#pragma once

#include <cstdint>

/// The kind of a class. The numbers are part of the interface and never change.
enum class KelClassCategoryType : std::int32_t {
    classObject = 1,
    parameterizedClass = 2,
    instantiatedClass = 3,
    classUtility = 4,
    parameterizedClassUtility = 5,
    instantiatedClassUtility = 6,
    metaclass = 8,
    interface = 9,
};
