#pragma once

#include <cstdint>

#include "vorn/platform/cstring.h"
#include "vorn/platform/fixed_decimal.h"

/// A count of decimal places.
using KelMrmFigure = std::int32_t;

/// The rounding object: rounds a real to a number of decimal places.
class NurMrm {
 public:
  /// Half away from zero, applied to the shortest decimal text that reads back as the value, which is what a person
  /// typed: 1.005 at 2 places is 1.01.
  static constexpr int kHalfAwayFromZero = 5;

  /// @param mode   only `kHalfAwayFromZero` is known; any other throws `CInvalidArgException`
  /// @param unit   0: round to the decimal place itself; any other throws `CInvalidArgException`
  /// @param places digits after the point; a negative number rounds before the point
  NurMrm(int mode, int unit, KelMrmFigure places);
  /// Half away from zero, to the decimal place.
  explicit NurMrm(KelMrmFigure places) : m_places(places) {}

  /// The rounded value. Zero carries no sign; unset, an infinity and NaN are given back as they are.
  [[nodiscard]] double ZMrm(double value) const;

  /// The rounded value as fixed-point text with exactly the places asked for; empty when the value is unset or
  /// rounds to the unset value.
  [[nodiscard]] CString Text(double value) const;

  /// `Text` without a string on the heap, for writing documents: `mrm.Format(x).View()`.
  [[nodiscard]] FixedDecimal Format(double value) const;

 private:
  KelMrmFigure m_places;
};
