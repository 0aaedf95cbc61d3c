#include "host/drawing/value_text.h"

#include <algorithm>
#include <cmath>

#include "vorn/platform/fixed_decimal.h"

namespace vorn_host {

std::string ValueText(double value, int least, int most) {
  std::string text(FixedDecimal(value, most).View());
  const std::size_t point = text.find('.');
  if (point == std::string::npos) return text;
  const std::size_t shortest = least > 0 ? point + 1 + static_cast<std::size_t>(least) : point;
  while (text.size() > shortest && (text.back() == '0' || text.back() == '.')) text.pop_back();
  return text == "-0" ? "0" : text;
}

std::string ScaleText(double scale) { return "1:" + ValueText(scale, 0, 3); }

std::string NumberedStation(double station, std::string_view prefix, double interval) {
  // What rounds up to a whole interval stands at the next number: "No.6+0.0000", not "No.5+20.0000".
  const double number = std::floor((station + kSamePlace) / interval);
  const double rest = std::max(0.0, station - number * interval);
  return std::string(prefix) + ValueText(number, 0, 0) + "+" + ValueText(rest, 4, 4);
}

}  // namespace vorn_host
