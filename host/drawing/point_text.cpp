#include "host/drawing/point_text.h"

#include <cmath>

#include "host/drawing/value_text.h"
#include "vorn/framework/tolerance.h"

namespace vorn_host {

namespace {

/// A segment as steep as this, height to width, is labelled with a ratio where nothing tells that it is a slope.
constexpr double kSteep = 0.2;

}  // namespace

std::string InputText(const ViewInput& input) {
  if (!input.x && !input.y) return {};
  const auto told = [](const std::optional<double>& value, const char* before, const char* behind) {
    return value ? before + ValueText(*value, 3, 4) + behind : std::string("–");
  };
  const std::string first = told(input.x, "", " m") + ", ";
  switch (input.reading) {
    case ViewInput::Reading::Rate:
      return first + told(input.y, "1:", "");
    case ViewInput::Reading::Percent:
      return first + told(input.y, "", " %");
    case ViewInput::Reading::WidthHeight:
      break;
  }
  return first + told(input.y, "", " m");
}

std::string GradeText(const ViewInput& input, SectionPart part, const SectionPlace& from, const SectionPlace& to) {
  const double width = std::abs(to.offset - from.offset);
  const double rise = to.height - from.height;
  const bool isUpright = width <= kSamePlace;
  const bool isLevel = std::abs(rise) <= kSamePlace;
  if (isUpright && (isLevel || part != SectionPart::Slope)) return {};
  const bool isUnknownPart = part == SectionPart::Other;
  const bool asRatio =
      part == SectionPart::Slope ||
      (isUnknownPart && (input.reading == ViewInput::Reading::Rate ||
                         (input.reading != ViewInput::Reading::Percent && std::abs(rise) > kSteep * width)));
  if (asRatio && !isLevel) {
    const double ratio =
        input.reading == ViewInput::Reading::Rate && input.y ? std::abs(*input.y) : width / std::abs(rise);
    return "1:" + ValueText(ratio, 1, 3);
  }
  const double percent = input.reading == ViewInput::Reading::Percent && input.y ? *input.y : 100.0 * rise / width;
  return ValueText(percent, 1, 3) + "%";
}

}  // namespace vorn_host
