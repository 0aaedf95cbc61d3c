#pragma once

#include <cstdint>
#include <string_view>

#include "vorn/platform/cstring.h"
#include "vorn/platform/nur_mrm.h"

/// Text conversion of numbers and of character widths. Nothing here looks at the locale.
class SilString {
 public:
  /// The longest leading decimal number after optional white space: sign, digits, point, exponent. Nothing numeric
  /// gives 0; infinities, NaN and hexadecimal are not numbers; what a double cannot hold is cut to its largest
  /// finite value with the sign, or to 0.
  [[nodiscard]] static double ToDouble(std::string_view text);

  /// The longest leading decimal integer after optional white space; nothing numeric gives 0, and a number outside
  /// 32 bits is cut to the nearest end of the range.
  [[nodiscard]] static std::int32_t ToInteger(std::string_view text);

  /// Fixed-point text with exactly `places` digits after the point, rounded as `NurMrm` mode 5 rounds: 12.3 with 3
  /// places gives 12.300, 2 with 0 places gives 2. Never an exponent, never a negative zero.
  [[nodiscard]] static CString StrDouble(double value, KelMrmFigure places);

  /// The decimal integer, with a minus sign when negative, no plus sign and no leading zeros.
  [[nodiscard]] static CString StrSignedInteger(std::int32_t value);

  /// The text with every half-width character replaced by its full-width form: ASCII (the space too) and half-width
  /// katakana, where a letter and the sound mark after it become one voiced letter. Other characters stay.
  [[nodiscard]] static CString HanToZen(std::string_view text);
};
