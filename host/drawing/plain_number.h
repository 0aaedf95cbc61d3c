#pragma once

#include <string>

#include "host/drawing/value_text.h"

namespace vorn_host {

/// A number as exchange files have it: rounded to a thousandth of the smallest length that Vorn tells apart (1e-9 m),
/// no exponent, no locale, no zeros at the end: "-3.5", "120". Empty for an infinity or NaN.
[[nodiscard]] inline std::string PlainNumber(double value) {
  constexpr int kPlaces = 9;
  return ValueText(value, 0, kPlaces);
}

}  // namespace vorn_host
