#pragma once

#include <string>

namespace vorn_host {

/// A number as exchange files have it: rounded to a thousandth of the smallest length that Vorn tells apart (1e-9 m),
/// no exponent, no locale, no zeros at the end: "-3.5", "120". Empty for an infinity or NaN.
[[nodiscard]] std::string PlainNumber(double value);

}  // namespace vorn_host
