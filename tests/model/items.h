#pragma once

#include <vector>

#include "vorn/platform/carray.h"

namespace model_test {

/// The elements of an array, for comparison and for readable failures.
template <typename Type, typename ArgType>
std::vector<Type> Items(const CArray<Type, ArgType>& array) {
  return {array.begin(), array.end()};
}

}  // namespace model_test
