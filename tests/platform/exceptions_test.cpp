#include "vorn/platform/exceptions.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "vorn/platform/carray.h"
#include "vorn/platform/cstring.h"
#include "vorn/platform/nur_mrm.h"

namespace {

/// What a host without the framework learns of a failure; empty when there was none.
template <typename Action>
std::string CaughtAsStandard(Action action) {
  try {
    action();
  } catch (const std::exception& error) {
    return error.what();
  }
  return {};
}

TEST(Exceptions, AreStandardExceptions) {
  static_assert(std::is_base_of_v<std::exception, CException>);
  static_assert(std::is_base_of_v<CException, CInvalidArgException>);
  static_assert(std::is_nothrow_copy_constructible_v<CInvalidArgException>);
}

TEST(Exceptions, AreCaughtAsStandardExceptionsWithAText) {
  EXPECT_EQ(CaughtAsStandard([] { throw CException(); }), "framework exception");
  EXPECT_EQ(CaughtAsStandard([] { throw CInvalidArgException(); }), "invalid argument");
}

TEST(Exceptions, OfTheLibraryAreCaughtAsStandardExceptions) {
  EXPECT_EQ(CaughtAsStandard([] { (void)CArray<int>()[0]; }), "invalid argument");
  EXPECT_EQ(CaughtAsStandard([] { (void)CString("abc").GetAt(3); }), "invalid argument");
  EXPECT_EQ(CaughtAsStandard([] { NurMrm(4, 0, 2); }), "invalid argument");
  EXPECT_EQ(CaughtAsStandard([] { (void)CString("abc").GetAt(2); }), "");
}

TEST(Exceptions, AreCaughtAsTheFrameworksToo) { EXPECT_THROW((void)CArray<int>()[0], CException); }

}  // namespace
