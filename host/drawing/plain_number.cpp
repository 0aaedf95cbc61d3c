#include "host/drawing/plain_number.h"

#include <string_view>

#include "vorn/platform/fixed_decimal.h"

namespace vorn_host {

std::string PlainNumber(double value) {
  constexpr int kPlaces = 9;
  const FixedDecimal decimal(value, kPlaces);
  std::string_view text = decimal.View();
  const std::size_t lastDigit = text.find_last_not_of('0');
  if (lastDigit == std::string_view::npos) return std::string(text);
  return std::string(text.substr(0, text[lastDigit] == '.' ? lastDigit : lastDigit + 1));
}

}  // namespace vorn_host
