#include "vorn/platform/careful_difference.h"

#include <cmath>

namespace {

/// The fraction of a value, cut to ten decimal places behind a lift of 0.35 units of the tenth, which brings back what
/// binary rounding took off.
double CutFraction(double value) {
  constexpr double kTenthPlace = 1e10;
  constexpr double kLift = 0.35;
  const double fraction = value - std::trunc(value);
  const double cut = std::floor(std::abs(fraction) * kTenthPlace + kLift) / kTenthPlace;
  return value < 0.0 ? -cut : cut;
}

}  // namespace

double NurCarefulDifference(double minuend, double subtrahend) {
  const double plain = minuend - subtrahend;
  const double careful =
      (std::trunc(minuend) - std::trunc(subtrahend)) + (CutFraction(minuend) - CutFraction(subtrahend));
  // The larger magnitude, intended: the plain difference stays where the cut took off more than rounding did.
  return std::abs(careful) > std::abs(plain) ? careful : plain;
}
