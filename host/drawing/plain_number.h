#pragma once

#include <string>

#include "host/drawing/value_text.h"

namespace vorn_host {

/// The decimals of lengths and heights in exchange files: a thousandth of the smallest length that Vorn tells apart.
inline constexpr int kExchangePlaces = 9;

/// A number as exchange files have it: rounded to `kExchangePlaces`, no exponent, no locale, no zeros at the end:
/// "-3.5", "120". Empty for an infinity or NaN.
[[nodiscard]] inline std::string PlainNumber(double value) { return ValueText(value, 0, kExchangePlaces); }

}  // namespace vorn_host
